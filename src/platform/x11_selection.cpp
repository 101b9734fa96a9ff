#include "platform/x11_selection.h"

#include <poll.h>
#include <xcb/xcb.h>

#include <QByteArray>
#include <QDeadlineTimer>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace platform {
namespace {

constexpr std::uint32_t kMostWords = 0x1000000;  // of 4 bytes, asked for at once
constexpr std::uint8_t kEventMask = 0x7F;        // the rest tells who has sent it

struct Free {
  void operator()(void* memory) const { std::free(memory); }
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using Event = std::unique_ptr<xcb_generic_event_t, Free>;

struct Part {
  xcb_atom_t type = XCB_ATOM_NONE;
  QByteArray bytes;
};

// A connection of our own: the toolkit's would hold the window for as long as an owner keeps
// silent. It stays, for those who answer late.
xcb_connection_t* server() {
  static std::unique_ptr<xcb_connection_t, Free> connection;
  if (connection == nullptr || xcb_connection_has_error(connection.get()) != 0) {
    connection.reset(xcb_connect(nullptr, nullptr));
  }
  return connection.get();
}

// One reading, in a window of its own.
class Reading final {
 public:
  explicit Reading(int milliseconds) : deadline_(milliseconds), server_(server()) {
    if (failed()) return;
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(server_)).data;
    const std::uint32_t watched = XCB_EVENT_MASK_PROPERTY_CHANGE;
    window_ = xcb_generate_id(server_);
    xcb_create_window(server_, 0, window_, screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      screen->root_visual, XCB_CW_EVENT_MASK, &watched);
  }
  // A program that has kept silent may still write to the window: it would die of its absence.
  ~Reading() {
    if (failed()) return;
    if (!silent_) xcb_destroy_window(server_, window_);
    xcb_flush(server_);
  }
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

  bool isOffered(const char* selection) {
    if (failed()) return false;
    selection_ = atom(selection);
    const auto cookie = xcb_get_selection_owner(server_, selection_);
    const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> reply(
        xcb_get_selection_owner_reply(server_, cookie, nullptr));
    return reply != nullptr && reply->owner != XCB_NONE;
  }

  // Null bytes where the owner has none of that kind.
  std::optional<QByteArray> read(xcb_atom_t target) {
    const xcb_atom_t place = atom("TAVOLIX_TEXT");
    xcb_convert_selection(server_, window_, selection_, target, place, XCB_CURRENT_TIME);
    const Event answer = next(XCB_SELECTION_NOTIFY);
    if (answer == nullptr) return std::nullopt;
    const auto& told = reinterpret_cast<const xcb_selection_notify_event_t&>(*answer);
    if (told.property == XCB_ATOM_NONE) return QByteArray();
    Part part = take(place);
    if (part.type == atom("INCR")) return readParts(place);
    return part.bytes.isNull() ? QByteArray("") : part.bytes;
  }

  xcb_atom_t atom(const char* name) {
    const auto length = static_cast<std::uint16_t>(std::strlen(name));
    const auto cookie = xcb_intern_atom(server_, 0, length, name);
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(
        xcb_intern_atom_reply(server_, cookie, nullptr));
    return reply == nullptr ? xcb_atom_t{XCB_ATOM_NONE} : reply->atom;
  }

 private:
  bool failed() const { return xcb_connection_has_error(server_) != 0; }

  // Answers to earlier readings may come at any time.
  bool isFor(const xcb_generic_event_t& event, std::uint8_t kind) const {
    if ((event.response_type & kEventMask) != kind) return false;
    return kind == XCB_SELECTION_NOTIFY
               ? reinterpret_cast<const xcb_selection_notify_event_t&>(event).requestor == window_
               : reinterpret_cast<const xcb_property_notify_event_t&>(event).window == window_;
  }

  // The next event of a kind; null if there is none in time.
  Event next(std::uint8_t kind) {
    for (;;) {
      xcb_flush(server_);
      Event event(xcb_poll_for_event(server_));
      if (event != nullptr && isFor(*event, kind)) return event;
      if (event != nullptr) continue;
      pollfd input{xcb_get_file_descriptor(server_), POLLIN, 0};
      const auto left = static_cast<int>(deadline_.remainingTime());
      if (failed() || left <= 0 || poll(&input, 1, left) == 0) {
        silent_ = true;
        return nullptr;
      }
    }
  }

  // What lies in a property, which is free for more afterwards.
  Part take(xcb_atom_t place) {
    const auto cookie =
        xcb_get_property(server_, 1, window_, place, XCB_GET_PROPERTY_TYPE_ANY, 0, kMostWords);
    const std::unique_ptr<xcb_get_property_reply_t, Free> reply(
        xcb_get_property_reply(server_, cookie, nullptr));
    if (reply == nullptr) return {};
    return {reply->type, QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                                    xcb_get_property_value_length(reply.get()))};
  }

  // A long text comes bit by bit, and ends with an empty one (ICCCM, 2.7.2).
  std::optional<QByteArray> readParts(xcb_atom_t place) {
    QByteArray all("");
    for (;;) {
      const Event event = next(XCB_PROPERTY_NOTIFY);
      if (event == nullptr) return std::nullopt;
      const auto& told = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
      if (told.atom != place || told.state != XCB_PROPERTY_NEW_VALUE) continue;
      const Part part = take(place);
      if (part.type == XCB_ATOM_NONE) continue;  // has been read with the one before
      if (part.bytes.isEmpty()) return all;
      all += part.bytes;
    }
  }

  QDeadlineTimer deadline_;
  xcb_connection_t* server_;
  bool silent_ = false;
  xcb_window_t window_ = XCB_NONE;
  xcb_atom_t selection_ = XCB_ATOM_NONE;
};

}  // namespace

std::optional<QString> readX11Selection(const char* selection, int milliseconds) {
  Reading reading(milliseconds);
  if (!reading.isOffered(selection)) return QString();
  std::optional<QByteArray> text = reading.read(reading.atom("UTF8_STRING"));
  if (!text) return std::nullopt;
  if (!text->isNull()) return QString::fromUtf8(*text);
  text = reading.read(XCB_ATOM_STRING);
  if (!text) return std::nullopt;
  return QString::fromLatin1(*text);
}

}  // namespace platform
