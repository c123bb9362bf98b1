#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QString>
#include <cstdlib>
#include <memory>

#include "surface/system/desktop/Programs.h"

namespace zelvane {

namespace {

template <class T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

struct Atoms {
  xcb_atom_t client_list = 0, name = 0, utf8 = 0;
};

/// Asks an X server about its windows. All questions go out before the first answer is waited for, so a
/// search costs three round trips however many windows there are.
class XWindows {
 public:
  explicit XWindows(xcb_connection_t* server) : server_(server), atoms_(KnownAtoms()) {}

  uint64_t Find(const std::string& title) const {
    const std::vector<xcb_window_t> windows = TopLevel();
    std::vector<xcb_get_property_cookie_t> names, old_names;
    for (const xcb_window_t window : windows) {
      names.push_back(Ask(window, atoms_.name, atoms_.utf8));
      old_names.push_back(Ask(window, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY));
    }
    uint64_t found = 0;
    for (size_t i = 0; i < windows.size(); ++i) {  // every answer has to be fetched
      const auto name = Answer(names[i]), old_name = Answer(old_names[i]);
      if (found == 0 && title == TitleOf(name.get(), old_name.get())) found = windows[i];
    }
    return found;
  }

 private:
  static constexpr uint32_t kLongestTitle = 1024, kMostWindows = 65536;  // 32-bit words

  Atoms KnownAtoms() const {
    static const Atoms atoms = [this] {
      const auto list = Intern("_NET_CLIENT_LIST"), name = Intern("_NET_WM_NAME"),
                 utf8 = Intern("UTF8_STRING");
      return Atoms{AtomOf(list), AtomOf(name), AtomOf(utf8)};
    }();
    return atoms;
  }
  xcb_intern_atom_cookie_t Intern(const std::string& name) const {
    return xcb_intern_atom(server_, 0, static_cast<uint16_t>(name.size()), name.c_str());
  }
  xcb_atom_t AtomOf(xcb_intern_atom_cookie_t cookie) const {
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(server_, cookie, nullptr), std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
  }
  xcb_get_property_cookie_t Ask(xcb_window_t window, xcb_atom_t property, xcb_atom_t type) const {
    return xcb_get_property(server_, 0, window, property, type, 0, kLongestTitle);
  }
  Reply<xcb_get_property_reply_t> Answer(xcb_get_property_cookie_t cookie) const {
    return {xcb_get_property_reply(server_, cookie, nullptr), std::free};
  }

  /// The window manager's list; without a manager the root's children.
  std::vector<xcb_window_t> TopLevel() const {
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server_)).data->root;
    const auto list_cookie =
        xcb_get_property(server_, 0, root, atoms_.client_list, XCB_ATOM_WINDOW, 0, kMostWindows);
    const auto tree_cookie = xcb_query_tree(server_, root);
    const auto list = Answer(list_cookie);
    const Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(server_, tree_cookie, nullptr), std::free);
    if (list && list->format == 32) {
      const auto* first = static_cast<const xcb_window_t*>(xcb_get_property_value(list.get()));
      return {first, first + list->value_len};
    }
    if (!tree) return {};
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
  }

  static std::string TextOf(const xcb_get_property_reply_t* reply) {
    const auto* text = static_cast<const char*>(xcb_get_property_value(reply));
    return {text, static_cast<size_t>(xcb_get_property_value_length(reply))};
  }
  std::string TitleOf(const xcb_get_property_reply_t* name, const xcb_get_property_reply_t* old_name) const {
    if (name && name->type == atoms_.utf8) return TextOf(name);
    if (!old_name || old_name->type == XCB_ATOM_NONE) return {};
    const std::string text = TextOf(old_name);
    return old_name->type == XCB_ATOM_STRING
               ? QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())).toStdString()
               : text;
  }

  xcb_connection_t* server_;
  Atoms atoms_;
};

}  // namespace

uint64_t FindWindowByTitle(const std::string& title) {
  if (!qGuiApp || title.empty()) return 0;
  // Other platforms may offer the interface too, without a connection behind it.
  if (QGuiApplication::platformName() != "xcb") return 0;
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (!x11 || xcb_connection_has_error(x11->connection())) return 0;
  return XWindows(x11->connection()).Find(title);
}

}  // namespace zelvane
