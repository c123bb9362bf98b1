#pragma once

#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include "document/window/frmPaint.h"
#include "shell/state/Settings.h"
#include "surface/forms/windows/Application.h"
#include "surface/forms/windows/EventLoop.h"

namespace zelvane {

/// Closes a document at the end of a benchmark.
class ClosedAtEnd {
 public:
  explicit ClosedAtEnd(frmPaint& document) : document_(document) {}
  ~ClosedAtEnd() {
    document_.SetDirtyFalse();
    document_.Unload();
    DoEvents();
  }
  ClosedAtEnd(const ClosedAtEnd&) = delete;
  ClosedAtEnd& operator=(const ClosedAtEnd&) = delete;

 private:
  frmPaint& document_;
};

/// Runs the benchmarks in the program that `start` starts, without it on the toolkit alone. Settings and data
/// go to a folder of their own. Returns the exit status; false of `start` tells that there is nothing to
/// measure.
inline int RunInProgram(
    int argc, char** argv, bool (*start)() = [] { return true; }) {
  const QTemporaryDir own;
  for (const char* folder : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"}) qputenv(folder, own.path().toLocal8Bit());
  WriteSetting("ShowSplashScreen", "0");
  benchmark::Initialize(&argc, argv);
  const Application toolkit(argc, argv);
  if (!start()) return 1;
  benchmark::RunSpecifiedBenchmarks();
  DestroyForms();
  return 0;
}

}  // namespace zelvane
