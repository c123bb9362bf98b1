// wait_painted window SECONDS
//   Waits until a window that fills at least 300 by 200 pixels shows something other than one plain colour.
// wait_painted colour RRGGBB SECONDS
//   Waits until the screen shows a square of 8 by 8 pixels of that colour.
// wait_painted pixel X Y
//   Prints the colour of a pixel of the screen, RRGGBB.
//
// The waits look at the screen without a pause between looks, and print the monotonic clock's seconds at
// which the look that found it began. They end with 1 when SECONDS have gone by without it.
#include <time.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using Owned = std::unique_ptr<Reply, Free>;

double Now() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

struct Picture {
  Owned<xcb_get_image_reply_t> reply;
  int width = 0, height = 0;
  uint32_t At(int x, int y) const {
    uint32_t pixel = 0;
    std::memcpy(&pixel, xcb_get_image_data(reply.get()) + 4 * (static_cast<size_t>(y) * width + x), 4);
    return pixel & 0xFFFFFF;
  }
};

bool Grab(xcb_connection_t* x, xcb_window_t window, int left, int top, int width, int height,
          Picture& picture) {
  const auto cookie = xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, window, static_cast<int16_t>(left),
                                    static_cast<int16_t>(top), static_cast<uint16_t>(width),
                                    static_cast<uint16_t>(height), ~0U);
  picture.reply.reset(xcb_get_image_reply(x, cookie, nullptr));
  picture.width = width;
  picture.height = height;
  return picture.reply && xcb_get_image_data_length(picture.reply.get()) >= 4 * width * height;
}

// JPEG keeps a colour only nearly.
bool Near(uint32_t one, uint32_t other) {
  for (int shift = 0; shift < 24; shift += 8) {
    const int difference = static_cast<int>(one >> shift & 0xFF) - static_cast<int>(other >> shift & 0xFF);
    if (difference < -6 || difference > 6) return false;
  }
  return true;
}

// Looks along a row in 32, which costs the server little.
bool ShowsColour(xcb_connection_t* x, const xcb_screen_t* screen, uint32_t colour) {
  for (int y = 0; y < screen->height_in_pixels; y += 32) {
    Picture row;
    if (!Grab(x, screen->root, 0, y, screen->width_in_pixels, 1, row)) return false;
    int run = 0;
    for (int i = 0; i < row.width; ++i) {
      run = Near(row.At(i, 0), colour) ? run + 1 : 0;
      if (run == 32) return true;
    }
  }
  return false;
}

bool ShowsSomething(const Picture& picture) {
  const uint32_t first = picture.At(0, 0);
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      if (picture.At(x, y) != first) return true;
    }
  }
  return false;
}

// A window of the program: mapped, of a main window's size, and its menu bar painted. No window manager is
// about.
bool ShowsWindow(xcb_connection_t* x, xcb_window_t root) {
  const Owned<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(x, xcb_query_tree(x, root), nullptr));
  if (!tree) return false;
  const xcb_window_t* children = xcb_query_tree_children(tree.get());
  for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
    const Owned<xcb_get_geometry_reply_t> place(
        xcb_get_geometry_reply(x, xcb_get_geometry(x, children[i]), nullptr));
    if (!place || place->width < 600 || place->height < 400) continue;
    const Owned<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(x, xcb_get_window_attributes(x, children[i]), nullptr));
    if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE) continue;
    Picture picture;
    if (Grab(x, children[i], 0, 0, place->width, 24, picture) && ShowsSomething(picture)) return true;
  }
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  const bool window = argc == 3 && std::strcmp(argv[1], "window") == 0;
  const bool colour = argc == 4 && std::strcmp(argv[1], "colour") == 0;
  if (!window && !colour) {
    std::fprintf(stderr, "wait_painted window SECONDS | colour RRGGBB SECONDS\n");
    return 2;
  }
  xcb_connection_t* x = xcb_connect(nullptr, nullptr);
  if (xcb_connection_has_error(x)) {
    std::fprintf(stderr, "wait_painted: no display\n");
    return 2;
  }
  const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(x)).data;
  const double end = Now() + std::atof(argv[argc - 1]);
  const auto wanted = colour ? static_cast<uint32_t>(std::strtoul(argv[2], nullptr, 16)) : 0U;
  while (true) {
    const double began = Now();
    const bool found = window ? ShowsWindow(x, screen->root) : ShowsColour(x, screen, wanted);
    if (found) {
      std::printf("%.6f\n", began);
      return 0;
    }
    if (began > end) return 1;
    usleep(200);
  }
}
