#pragma once

#include <cstdint>
#include <string>

namespace zelvane {

class Form;

/// Shows a message above the active window and waits for the answer. `buttons` is a button set, 0 to 5: OK;
/// OK, Cancel; Abort, Retry, Ignore; Yes, No, Cancel; Yes, No; Retry, Cancel. `icon` is 0 for none, 1 stop, 2
/// question, 3 exclamation, 4 information. `default_button` counts from 0. Returns 1 OK, 2 Cancel (also Esc
/// and the close box), 3 Abort, 4 Retry, 5 Ignore, 6 Yes, 7 No.
int16_t ShowMessage(const std::string& prompt, int buttons, int icon, int default_button,
                    const std::string& title);

/// The desktop's file dialogs. `filter` is pairs of a text and its patterns, all parted by "|". An empty
/// result means cancelled. `filter_index` counts from 1, 0 leaves the first, and holds the choice on return.
std::string AskOpenName(const std::string& title, const std::string& filter, const std::string& folder,
                        const std::string& name, int16_t& filter_index);
std::string AskSaveName(const std::string& title, const std::string& filter, const std::string& folder,
                        const std::string& name, int16_t& filter_index);

}  // namespace zelvane
