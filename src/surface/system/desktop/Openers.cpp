#include "surface/system/desktop/Openers.h"

#include <QDesktopServices>
#include <QStandardPaths>
#include <QUrl>
#include <QUrlQuery>
#include <string>
#include <vector>

#include "surface/system/desktop/Programs.h"
#include "surface/system/text/QtText.h"

namespace zelvane {
namespace {

struct InformationProgram {
  const char* name;
  std::vector<std::string> arguments;
};

/// The desktops' own ones before those that go with any.
const std::vector<InformationProgram>& InformationPrograms() {
  static const std::vector<InformationProgram> programs = {{"kinfocenter", {}},
                                                           {"gnome-control-center", {"info-overview"}},
                                                           {"cinnamon-settings", {"info"}},
                                                           {"mate-system-monitor", {"--show-system-tab"}},
                                                           {"hardinfo2", {}},
                                                           {"hardinfo", {}}};
  return programs;
}

}  // namespace

bool OpenWebAddress(const std::string& address) {
  return QDesktopServices::openUrl(QUrl(ToQt(address)));
}

bool ComposeMail(const std::string& recipient, const std::string& subject) {
  QUrlQuery query;
  query.addQueryItem("subject", ToQt(subject));
  QUrl mail;
  mail.setScheme("mailto");
  mail.setPath(ToQt(recipient));
  mail.setQuery(query);
  return QDesktopServices::openUrl(mail);
}

bool ShowSystemInformation() {
  for (const InformationProgram& program : InformationPrograms()) {
    const QString path = QStandardPaths::findExecutable(program.name);
    if (!path.isEmpty() && StartProgram(FromQt(path), program.arguments)) return true;
  }
  return false;
}

}  // namespace zelvane
