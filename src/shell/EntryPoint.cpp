#include <string>

#include "shell/HandOver.h"
#include "shell/Main.h"
#include "shell/state/DataFile.h"
#include "surface/forms/windows/Application.h"
#include "surface/forms/windows/Form.h"
#include "surface/system/desktop/Fonts.h"

namespace {

/// What stands behind the program's name.
std::string Tail(int argc, char** argv) {
  std::string tail;
  for (int i = 1; i < argc; ++i) {
    if (i > 1) tail += ' ';
    tail += argv[i];
  }
  return tail;
}

}  // namespace

int main(int argc, char** argv) {
  if (zelvane::HandOver(zelvane::PathFromCommandLine(Tail(argc, argv)))) return 0;
  zelvane::OpenDataFileAhead();
  zelvane::ReadFontsAhead();
  zelvane::Application application(argc, argv);
  const zelvane::StartResult start = zelvane::Main(Tail(argc, argv));
  int code = static_cast<int>(start);
  if (start == zelvane::StartResult::Running) code = application.Run();
  zelvane::DestroyForms();
  zelvane::EndHandOver();
  return code;
}
