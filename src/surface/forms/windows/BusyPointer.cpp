#include "surface/forms/windows/BusyPointer.h"

#include <QCursor>
#include <QGuiApplication>

namespace zelvane {

BusyPointer::BusyPointer() {
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

BusyPointer::~BusyPointer() {
  QGuiApplication::restoreOverrideCursor();
}

bool BusyPointer::IsStanding() {
  return QGuiApplication::overrideCursor() != nullptr;
}

}  // namespace zelvane
