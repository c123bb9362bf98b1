#pragma once

#include <string>

/// The desktop's own programs for what isn't ours. False where the desktop has none; what becomes of it there
/// isn't told.
namespace zelvane {

/// The browser, at a web address.
bool OpenWebAddress(const std::string& address);
/// The mail program, with a new mail.
bool ComposeMail(const std::string& recipient, const std::string& subject);
/// What tells of the machine and its system.
bool ShowSystemInformation();

}  // namespace zelvane
