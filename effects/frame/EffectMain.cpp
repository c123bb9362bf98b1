#include "effects/Effects.h"
#include "effects/frame/RunEffect.h"

/// Compiled once for every effect, which `EFFECT` names.
int main(int argc, char** argv) {
  return zelvane::RunEffect(zelvane::EFFECT(), argc, argv);
}
