#pragma once

#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include "shell/state/Settings.h"
#include "surface/forms/windows/Application.h"

namespace zelvane {

/// Runs the benchmarks in the program that `start` starts, whose settings and data go to a folder of their
/// own. Returns the exit status; false of `start` tells that there is nothing to measure.
inline int RunInProgram(int argc, char** argv, bool (*start)()) {
  const QTemporaryDir own;
  for (const char* folder : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"}) qputenv(folder, own.path().toLocal8Bit());
  WriteSetting("ShowSplashScreen", "0");
  benchmark::Initialize(&argc, argv);
  const Application toolkit(argc, argv);
  if (!start()) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace zelvane
