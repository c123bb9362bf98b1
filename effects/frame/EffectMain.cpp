#include "effects/Effects.h"
#include "effects/frame/EffectProgram.h"

/// Compiled once for every effect, which `EFFECT` names.
int main(int argc, char** argv) {
  return zelvane::RunEffectProgram(zelvane::EFFECT(), argc, argv);
}
