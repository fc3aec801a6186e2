// A scripted X client that owns a selection, well or badly, for tests and end-to-end scripts. It speaks the
// protocol by itself, so that it can also break it.
//
//   clipboard-owner [option...] [TARGET=VALUE...]
//     --selection NAME   CLIPBOARD (default), PRIMARY, ...
//     TARGET=VALUE       an offer; the order is kept. TARGET may be TARGET:TYPE or TARGET:TYPE/32.
//                        @FILE as VALUE is the content of a file, hex:DIGITS is bytes.
//     --size BYTES       offers UTF8_STRING with that many bytes of text
//     --secret           marks the content as a password manager does
//     --window           owns through a mapped window of its own, instead of an unmapped one
//     --slow MS          waits before each answer
//     --hang             never answers
//     --hang-on TARGET   never answers for that target
//     --refuse TARGET    offers that target and refuses to deliver it
//     --die              ends when first asked
//     --stall            announces every value to come in pieces and never sends one
//     --lie-size BYTES   what an announcement of pieces claims instead of the true size
//     --piece BYTES      values larger than this go out in pieces (default 200000)
//     --keep             stays after losing the selection
//     --manager          is a clipboard manager: owns CLIPBOARD_MANAGER; when asked to save it fetches the
//                        targets from the owner of CLIPBOARD and takes that over
//
// On standard output, a line each: "owned WINDOW", "request TARGET", "sent TARGET" (pieces: after the last),
// "saved TARGET BYTES", "lost". On standard input, a line each: "own" takes the selection again, "release"
// gives it up.

#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

namespace {

struct Offer {
  std::string target;
  std::string type;
  int format = 8;
  std::string bytes;
};

struct Options {
  std::string selection = "CLIPBOARD";
  std::vector<Offer> offers;
  bool hasWindow = false;
  bool hangs = false;
  std::string hangsOn;
  std::string refuses;
  bool dies = false;
  bool stalls = false;
  bool keeps = false;
  bool isManager = false;
  int slowMilliseconds = 0;
  std::optional<uint32_t> claimedSize;
  size_t pieceSize = 200000;
};

struct Outgoing {
  xcb_window_t requestor;
  xcb_atom_t property;
  Offer offer;
  size_t offset = 0;
};

xcb_connection_t* x = nullptr;
xcb_window_t window = 0;
Options options;
std::vector<Outgoing> outgoing;

[[noreturn]] void fail(const std::string& why) {
  std::cerr << "clipboard-owner: " << why << std::endl;
  std::exit(2);
}

void say(const std::string& line) {
  std::cout << line << std::endl;
}

xcb_atom_t atom(const std::string& name) {
  auto* reply = xcb_intern_atom_reply(
      x, xcb_intern_atom(x, 0, static_cast<uint16_t>(name.size()), name.data()), nullptr);
  const xcb_atom_t result = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  std::free(reply);
  return result;
}

std::string nameOf(xcb_atom_t atom) {
  auto* reply = xcb_get_atom_name_reply(x, xcb_get_atom_name(x, atom), nullptr);
  if (!reply) return "?";
  const std::string name(xcb_get_atom_name_name(reply),
                         static_cast<size_t>(xcb_get_atom_name_name_length(reply)));
  std::free(reply);
  return name;
}

Offer parseOffer(const std::string& text) {
  const auto equals = text.find('=');
  if (equals == std::string::npos) fail("neither an option nor an offer: " + text);
  // A MIME type holds a slash and may hold an equals sign after a semicolon ("text/plain;charset=utf-8=...").
  const auto parameter = text.find(";charset=");
  const auto split =
      parameter != std::string::npos && parameter < equals ? text.find('=', equals + 1) : equals;
  if (split == std::string::npos) fail("no value: " + text);
  Offer offer;
  offer.target = text.substr(0, split);
  offer.bytes = text.substr(split + 1);
  const auto colon = offer.target.find(':');
  offer.type = offer.target;
  if (colon != std::string::npos) {
    offer.type = offer.target.substr(colon + 1);
    offer.target.resize(colon);
    const auto slash = offer.type.rfind("/32");
    if (slash != std::string::npos && slash + 3 == offer.type.size()) {
      offer.format = 32;
      offer.type.resize(slash);
    }
  }
  if (offer.bytes.rfind("hex:", 0) == 0) {
    std::string bytes;
    for (size_t at = 4; at + 1 < offer.bytes.size(); at += 2) {
      bytes += static_cast<char>(std::stoi(offer.bytes.substr(at, 2), nullptr, 16));
    }
    offer.bytes = bytes;
  } else if (offer.bytes.rfind('@', 0) == 0) {
    std::ifstream file(offer.bytes.substr(1), std::ios::binary);
    if (!file) fail("cannot read " + offer.bytes.substr(1));
    offer.bytes.assign(std::istreambuf_iterator<char>(file), {});
  }
  return offer;
}

std::string textOfSize(size_t size) {
  std::string text;
  text.reserve(size);
  for (size_t i = 0; text.size() < size; ++i) text += "line " + std::to_string(i) + "\n";
  text.resize(size);
  return text;
}

Options parse(int argc, char** argv) {
  Options result;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    const auto value = [&]() -> std::string {
      if (++i >= argc) fail("a value is missing after " + argument);
      return argv[i];
    };
    if (argument == "--selection")
      result.selection = value();
    else if (argument == "--size")
      result.offers.push_back({"UTF8_STRING", "UTF8_STRING", 8, textOfSize(std::stoul(value()))});
    else if (argument == "--secret")
      result.offers.push_back({"x-kde-passwordManagerHint", "x-kde-passwordManagerHint", 8, "secret"});
    else if (argument == "--window")
      result.hasWindow = true;
    else if (argument == "--slow")
      result.slowMilliseconds = std::stoi(value());
    else if (argument == "--hang")
      result.hangs = true;
    else if (argument == "--hang-on")
      result.hangsOn = value();
    else if (argument == "--refuse")
      result.refuses = value();
    else if (argument == "--die")
      result.dies = true;
    else if (argument == "--stall")
      result.stalls = true;
    else if (argument == "--lie-size")
      result.claimedSize = static_cast<uint32_t>(std::stoul(value()));
    else if (argument == "--piece")
      result.pieceSize = std::stoul(value());
    else if (argument == "--keep")
      result.keeps = true;
    else if (argument == "--manager") {
      result.isManager = true;
      result.selection = "CLIPBOARD_MANAGER";
    } else
      result.offers.push_back(parseOffer(argument));
  }
  return result;
}

void write(xcb_window_t requestor, xcb_atom_t property, const Offer& offer, size_t offset, size_t length) {
  xcb_change_property(
      x, XCB_PROP_MODE_REPLACE, requestor, property, atom(offer.type), static_cast<uint8_t>(offer.format),
      static_cast<uint32_t>(length / static_cast<size_t>(offer.format / 8)), offer.bytes.data() + offset);
}

void put(xcb_window_t requestor, xcb_atom_t property, const Offer& offer) {
  if (!options.stalls && offer.bytes.size() <= options.pieceSize) {
    write(requestor, property, offer, 0, offer.bytes.size());
    say("sent " + offer.target);
    return;
  }
  const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(x, requestor, XCB_CW_EVENT_MASK, &mask);
  const uint32_t size = options.claimedSize.value_or(static_cast<uint32_t>(offer.bytes.size()));
  xcb_change_property(x, XCB_PROP_MODE_REPLACE, requestor, property, atom("INCR"), 32, 1, &size);
  if (!options.stalls) outgoing.push_back({requestor, property, offer});
}

void sendNextPiece(xcb_window_t requestor, xcb_atom_t property) {
  for (auto it = outgoing.begin(); it != outgoing.end(); ++it) {
    if (it->requestor != requestor || it->property != property) continue;
    const size_t length = std::min(options.pieceSize, it->offer.bytes.size() - it->offset);
    write(requestor, property, it->offer, it->offset, length);
    it->offset += length;
    if (length == 0) {
      say("sent " + it->offer.target);
      outgoing.erase(it);
    }
    return;
  }
}

/// Waits for the next event that is `wanted` and drops all others.
template <typename Wanted>
xcb_generic_event_t* waitFor(Wanted wanted) {
  while (xcb_generic_event_t* event = xcb_wait_for_event(x)) {
    if (wanted(*event)) return event;
    std::free(event);
  }
  fail("the X server is gone");
}

/// The manager's own way of asking: it waits, as simple managers do.
std::optional<Offer> fetch(const std::string& target) {
  const xcb_atom_t property = atom("FETCHED");
  xcb_delete_property(x, window, property);
  xcb_convert_selection(x, window, atom("CLIPBOARD"), atom(target), property, XCB_CURRENT_TIME);
  xcb_flush(x);
  auto* event =
      waitFor([](const xcb_generic_event_t& e) { return (e.response_type & 0x7f) == XCB_SELECTION_NOTIFY; });
  const bool isServed = reinterpret_cast<xcb_selection_notify_event_t*>(event)->property != XCB_ATOM_NONE;
  std::free(event);
  if (!isServed) return std::nullopt;

  const auto take = [property] {
    auto* reply = xcb_get_property_reply(
        x, xcb_get_property(x, 1, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 0x1fffffff), nullptr);
    Offer offer;
    offer.type = nameOf(reply->type);
    offer.format = reply->format;
    offer.bytes.assign(static_cast<char*>(xcb_get_property_value(reply)),
                       static_cast<size_t>(xcb_get_property_value_length(reply)));
    std::free(reply);
    return offer;
  };
  Offer result = take();
  result.target = target;
  if (result.type != "INCR") return result;
  result.bytes.clear();
  for (;;) {
    xcb_flush(x);
    std::free(waitFor([property](const xcb_generic_event_t& e) {
      const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(e);
      return (e.response_type & 0x7f) == XCB_PROPERTY_NOTIFY && notify.atom == property &&
             notify.state == XCB_PROPERTY_NEW_VALUE;
    }));
    const Offer piece = take();
    result.type = piece.type;
    result.format = piece.format;
    if (piece.bytes.empty()) return result;
    result.bytes += piece.bytes;
  }
}

void own(const std::string& selection) {
  xcb_set_selection_owner(x, window, atom(selection), XCB_CURRENT_TIME);
  // Waits until the server has done it, so that whoever reads the line can count on it.
  std::free(xcb_get_selection_owner_reply(x, xcb_get_selection_owner(x, atom(selection)), nullptr));
  say("owned " + std::to_string(window));
}

void save(const xcb_selection_request_event_t& request) {
  auto* reply = xcb_get_property_reply(
      x, xcb_get_property(x, 0, request.requestor, request.property, XCB_ATOM_ATOM, 0, 1024), nullptr);
  const auto* list = static_cast<xcb_atom_t*>(xcb_get_property_value(reply));
  const std::vector<xcb_atom_t> wanted(list, list + xcb_get_property_value_length(reply) / 4);
  std::free(reply);
  for (const xcb_atom_t target : wanted) {
    auto offer = fetch(nameOf(target));
    if (!offer) continue;
    say("saved " + offer->target + " " + std::to_string(offer->bytes.size()));
    options.offers.push_back(std::move(*offer));
  }
  xcb_change_property(x, XCB_PROP_MODE_REPLACE, request.requestor, request.property, atom("NULL"), 32, 0,
                      nullptr);
  options.selection = "CLIPBOARD";
  own("CLIPBOARD");
}

bool convert(const xcb_selection_request_event_t& request, const std::string& target) {
  if (options.isManager && target == "SAVE_TARGETS") {
    save(request);
    return true;
  }
  if (target == "TARGETS") {
    std::vector<xcb_atom_t> list{atom("TARGETS")};
    for (const Offer& offer : options.offers) list.push_back(atom(offer.target));
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, request.requestor, request.property, XCB_ATOM_ATOM, 32,
                        static_cast<uint32_t>(list.size()), list.data());
    return true;
  }
  for (const Offer& offer : options.offers) {
    if (offer.target != target) continue;
    put(request.requestor, request.property, offer);
    return true;
  }
  return false;
}

void answer(const xcb_selection_request_event_t& request) {
  const std::string target = nameOf(request.target);
  say("request " + target);
  if (options.dies) std::_Exit(0);
  if (options.hangs || target == options.hangsOn) return;
  if (options.slowMilliseconds > 0) usleep(static_cast<useconds_t>(options.slowMilliseconds) * 1000);
  const bool isServed = target != options.refuses && convert(request, target);
  union {
    xcb_selection_notify_event_t event;
    char bytes[32];
  } notify{};
  notify.event.response_type = XCB_SELECTION_NOTIFY;
  notify.event.time = request.time;
  notify.event.requestor = request.requestor;
  notify.event.selection = request.selection;
  notify.event.target = request.target;
  notify.event.property = isServed ? request.property : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  xcb_send_event(x, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, notify.bytes);
}

void handle(const xcb_generic_event_t& event) {
  switch (event.response_type & 0x7f) {
    case XCB_SELECTION_REQUEST:
      answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
      break;
    case XCB_PROPERTY_NOTIFY: {
      const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
      if (notify.state == XCB_PROPERTY_DELETE) sendNextPiece(notify.window, notify.atom);
      break;
    }
    case XCB_SELECTION_CLEAR:
      say("lost");
      if (!options.keeps) std::exit(0);
      break;
    default:
      break;
  }
  xcb_flush(x);
}

void obey(const std::string& line) {
  if (line == "own") own(options.selection);
  if (line == "release") {
    xcb_set_selection_owner(x, XCB_WINDOW_NONE, atom(options.selection), XCB_CURRENT_TIME);
    xcb_flush(x);
  }
}

}  // namespace

int main(int argc, char** argv) {
  options = parse(argc, argv);
  x = xcb_connect(nullptr, nullptr);
  if (xcb_connection_has_error(x)) fail("no X server");
  xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(x)).data;
  window = xcb_generate_id(x);
  const uint32_t values[] = {screen->white_pixel, XCB_EVENT_MASK_PROPERTY_CHANGE};
  xcb_create_window(x, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 200, 100, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
  if (options.hasWindow) xcb_map_window(x, window);
  own(options.selection);

  std::string input;
  pollfd sources[] = {{xcb_get_file_descriptor(x), POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}};
  for (;;) {
    while (xcb_generic_event_t* event = xcb_poll_for_event(x)) {
      handle(*event);
      std::free(event);
    }
    if (xcb_connection_has_error(x)) return 0;
    xcb_flush(x);
    poll(sources, 2, -1);
    if (sources[1].revents & (POLLIN | POLLHUP)) {
      char buffer[256];
      const ssize_t length = read(STDIN_FILENO, buffer, sizeof buffer);
      // Without anybody at the other end there is nothing more to obey.
      if (length <= 0)
        sources[1].fd = -1;
      else
        input.append(buffer, static_cast<size_t>(length));
    }
    for (size_t end; (end = input.find('\n')) != std::string::npos; input.erase(0, end + 1)) {
      obey(input.substr(0, end));
    }
  }
}
