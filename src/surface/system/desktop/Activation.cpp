#include "surface/system/desktop/Activation.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QWidget>
#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace zelvane {
namespace {

constexpr char kToken[] = "XDG_ACTIVATION_TOKEN", kStartupId[] = "DESKTOP_STARTUP_ID";

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

/// A connection of its own to the X server: what it waits for is in nobody else's queue.
class XServer {
 public:
  XServer() {
    int number = 0;
    connection_ = xcb_connect(nullptr, &number);
    if (xcb_connection_has_error(connection_)) return;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    while (number-- > 0 && screens.rem > 1) xcb_screen_next(&screens);
    root_ = screens.data->root;
  }
  ~XServer() {
    // What is still on its way as a connection ends gets lost: the answer tells that all has arrived.
    std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    xcb_disconnect(connection_);
  }
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;

  bool IsThere() const { return root_ != XCB_WINDOW_NONE; }

  /// The server's clock, which it tells with the change of a property.
  xcb_timestamp_t Now() {
    const uint32_t wanted = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_window_t clock = NewWindow(XCB_CW_EVENT_MASK, &wanted);
    xcb_change_property(connection_, XCB_PROP_MODE_APPEND, clock, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0,
                        nullptr);
    xcb_flush(connection_);
    xcb_timestamp_t now = XCB_CURRENT_TIME;
    using Event = std::unique_ptr<xcb_generic_event_t, decltype(&std::free)>;
    while (const Event event{xcb_wait_for_event(connection_), std::free}) {
      if ((event->response_type & ~0x80) != XCB_PROPERTY_NOTIFY) continue;
      now = reinterpret_cast<const xcb_property_notify_event_t*>(event.get())->time;
      break;
    }
    xcb_destroy_window(connection_, clock);
    return now;
  }

  /// Asks the window manager, as an application (1) that was called for at that time.
  void Activate(xcb_window_t window, xcb_timestamp_t time) {
    xcb_client_message_event_t message = Message(window, "_NET_ACTIVE_WINDOW", 32);
    message.data.data32[0] = 1;
    message.data.data32[1] = time;
    SendToRoot(message, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT);
  }

  /// The text and the 0 behind it go out in pieces of 20 bytes.
  void TellStartup(const std::string& text) {
    const xcb_window_t from = NewWindow(0, nullptr);
    const char* type = "_NET_STARTUP_INFO_BEGIN";
    for (size_t at = 0; at <= text.size();) {
      xcb_client_message_event_t message = Message(from, type, 8);
      const size_t count = std::min(text.size() + 1 - at, sizeof message.data.data8);
      std::memcpy(message.data.data8, text.c_str() + at, count);
      SendToRoot(message, XCB_EVENT_MASK_PROPERTY_CHANGE);
      type = "_NET_STARTUP_INFO";
      at += count;
    }
    xcb_destroy_window(connection_, from);
  }

 private:
  xcb_window_t NewWindow(uint32_t mask, const uint32_t* values) {
    const xcb_window_t window = xcb_generate_id(connection_);
    xcb_create_window(connection_, 0, window, root_, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, mask, values);
    return window;
  }

  xcb_client_message_event_t Message(xcb_window_t window, const char* type, uint8_t format) {
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = format;
    message.window = window;
    const auto question = xcb_intern_atom(connection_, 0, static_cast<uint16_t>(std::strlen(type)), type);
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
        xcb_intern_atom_reply(connection_, question, nullptr), std::free);
    if (atom) message.type = atom->atom;
    return message;
  }

  void SendToRoot(const xcb_client_message_event_t& message, uint32_t mask) {
    xcb_send_event(connection_, 0, root_, mask, reinterpret_cast<const char*>(&message));
  }

  xcb_connection_t* connection_;
  xcb_window_t root_ = XCB_WINDOW_NONE;
};

/// When the person started something, as its id tells at the end; 0 where it doesn't.
xcb_timestamp_t TimeOf(const std::string& startup_id) {
  constexpr char kMark[] = "_TIME";
  xcb_timestamp_t time = 0;
  const size_t at = startup_id.rfind(kMark);
  if (at == std::string::npos) return time;
  const char* const digits = startup_id.data() + at + std::strlen(kMark);
  std::from_chars(digits, startup_id.data() + startup_id.size(), time);
  return time;
}

std::string InQuotes(const std::string& text) {
  std::string quoted = "\"";
  for (const char character : text) {
    if (character == '"' || character == '\\') quoted += '\\';
    quoted += character;
  }
  return quoted + '"';
}

void ActivateOnX11(xcb_window_t window, const std::string& startup_id) {
  XServer server;
  if (!server.IsThere()) return;
  const xcb_timestamp_t told = TimeOf(startup_id);
  server.Activate(window, told ? told : server.Now());
  if (!startup_id.empty()) server.TellStartup("remove: ID=" + InQuotes(startup_id));
}

}  // namespace

Activation ActivationOfThisStart() {
  return {Variable(kToken), Variable(kStartupId)};
}

void BringToFront(QWidget& window, const Activation& activation) {
  const QString platform = QGuiApplication::platformName();
  // Where the toolkit looks for it as it activates the window.
  if (platform.startsWith("wayland") && !activation.token.empty())
    qputenv(kToken, QByteArray::fromStdString(activation.token));
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.raise();
  // The toolkit would ask there in the name of what its own windows heard last, which may be long ago.
  if (platform == "xcb")
    return ActivateOnX11(static_cast<xcb_window_t>(window.winId()), activation.startup_id);
  window.activateWindow();
}

}  // namespace zelvane
