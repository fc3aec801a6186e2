#pragma once

#include <xcb/xcb.h>

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <cstdlib>
#include <functional>
#include <memory>

#include "base/observable.h"

namespace lumeno {

/// Frees what xcb allocates.
struct XcbFree {
  void operator()(void* p) const { std::free(p); }
};
template <typename T>
using XcbPtr = std::unique_ptr<T, XcbFree>;

/// Our own connection to the X server, shared by everything of the X11 back end that lives on the main
/// thread. It is separate from the toolkit's, so that raw input, selections and properties can be watched
/// without its filters. Events are delivered from the event loop. Replies come from the local X server only;
/// no request here waits for another client.
class X11Connection final : public QObject {
  Q_OBJECT
 public:
  /// Null when there is no X server.
  [[nodiscard]] static std::unique_ptr<X11Connection> open();
  ~X11Connection() override;

  [[nodiscard]] xcb_connection_t* xcb() const { return connection_; }
  [[nodiscard]] xcb_screen_t* screen() const { return screen_; }
  [[nodiscard]] xcb_window_t root() const { return screen_->root; }
  /// An unmapped input-only window of ours, for selections and properties.
  [[nodiscard]] xcb_window_t helperWindow() const { return helperWindow_; }
  void flush() const { xcb_flush(connection_); }

  /// Interned once, then answered from memory.
  [[nodiscard]] xcb_atom_t atom(const QByteArray& name);
  [[nodiscard]] QByteArray atomName(xcb_atom_t atom);

  using EventHandler = std::function<void(const xcb_generic_event_t&)>;
  /// Events by response type (for extensions: their first event plus the number), the synthetic bit ignored.
  [[nodiscard]] Subscription onEvent(uint8_t responseType, EventHandler handler);
  /// Generic events (XGE) of one extension, by its major opcode.
  [[nodiscard]] Subscription onGenericEvent(uint8_t extensionOpcode, EventHandler handler);

  /// Adds `mask` to what we listen for on a window (other listeners of this connection keep theirs).
  void addWindowEventMask(xcb_window_t window, uint32_t mask);

 Q_SIGNALS:
  /// The server is gone. Nothing more will come.
  void broken();

 private:
  X11Connection(xcb_connection_t* connection, int screenNumber);
  void dispatchPending();
  void dispatch(const xcb_generic_event_t& event);

  xcb_connection_t* connection_;
  xcb_screen_t* screen_ = nullptr;
  xcb_window_t helperWindow_ = 0;
  bool isBroken_ = false;
  QHash<QByteArray, xcb_atom_t> atoms_;
  QHash<xcb_atom_t, QByteArray> atomNames_;
  QHash<xcb_window_t, uint32_t> eventMasks_;
  QHash<uint8_t, std::shared_ptr<Signal<const xcb_generic_event_t&>>> handlers_;
  QHash<uint8_t, std::shared_ptr<Signal<const xcb_generic_event_t&>>> genericHandlers_;
};

}  // namespace lumeno
