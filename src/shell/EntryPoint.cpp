#include <string>

#include "shell/Main.h"
#include "surface/forms/windows/Application.h"
#include "surface/forms/windows/Form.h"

int main(int argc, char** argv) {
  zelvane::Application application(argc, argv);
  std::string tail;
  for (int i = 1; i < argc; ++i) {
    if (i > 1) tail += ' ';
    tail += argv[i];
  }
  const zelvane::StartResult start = zelvane::Main(tail);
  if (start != zelvane::StartResult::Running) return static_cast<int>(start);
  const int code = application.Run();
  zelvane::DestroyForms();
  return code;
}
