#include "platform/x11/x11_keyboard.h"

#include <algorithm>

#include "platform/x11/x11_key_map.h"
#include "platform/x11/x11_xkb.h"

namespace lumeno {

namespace {

constexpr unsigned int mostGroups = 4;
constexpr xcb_xkb_device_spec_t coreKeyboard = XCB_XKB_ID_USE_CORE_KBD;

// Which of a key's own groups serves a group that it does not have.
unsigned int groupWithin(unsigned int group, uint8_t groupInfo) {
  const unsigned int count = groupInfo & 0x0f;
  if (group < count) return group;
  if (groupInfo & 0x80) return std::min<unsigned int>((groupInfo >> 4) & 0x03, count - 1);
  if (groupInfo & 0x40) return count - 1;
  return group % count;
}

}  // namespace

X11Keyboard::X11Keyboard(X11Connection& connection) : connection_(connection) {
  xcb_connection_t* xcb = connection_.xcb();
  const auto* extension = xcb_get_extension_data(xcb, &xcb_xkb_id);
  if (!extension || !extension->present) return;
  const auto use = xcb_xkb_use_extension(xcb, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
  const XcbPtr<xcb_xkb_use_extension_reply_t> used(xcb_xkb_use_extension_reply(xcb, use, nullptr));
  if (!used || !used->supported) return;

  events_ = connection_.onEvent(extension->first_event, [this](const auto& event) { handleEvent(event); });
  constexpr uint16_t which = XCB_XKB_EVENT_TYPE_STATE_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                             XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY;
  xcb_xkb_select_events(xcb, coreKeyboard, which, 0, which, XCB_XKB_MAP_PART_KEY_SYMS,
                        XCB_XKB_MAP_PART_KEY_SYMS, nullptr);
  modifiers_ = queryModifiers();
}

uint64_t X11Keyboard::queryModifiers() {
  const auto cookie = xcb_xkb_get_state(connection_.xcb(), coreKeyboard);
  const XcbPtr<xcb_xkb_get_state_reply_t> state(xcb_xkb_get_state_reply(connection_.xcb(), cookie, nullptr));
  if (!state) return modifiers_;
  group_ = state->group;
  return X11KeyMap::modifiers(state->mods);
}

void X11Keyboard::handleEvent(const xcb_generic_event_t& event) {
  switch (event.pad0) {  // the keyboard extension's own type
    case XCB_XKB_STATE_NOTIFY: {
      const auto& state = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
      modifiers_ = X11KeyMap::modifiers(state.mods);
      group_ = state.group;
      break;
    }
    case XCB_XKB_MAP_NOTIFY:
    case XCB_XKB_NEW_KEYBOARD_NOTIFY:
      isLayoutKnown_ = false;
      break;
  }
}

void X11Keyboard::loadLayout() {
  if (isLayoutKnown_) return;
  isLayoutKnown_ = true;
  keysymsByGroup_.assign(mostGroups, std::vector<uint32_t>(256, 0));
  const auto cookie = xcb_xkb_get_map(connection_.xcb(), coreKeyboard, XCB_XKB_MAP_PART_KEY_SYMS, 0, 0, 0, 0,
                                      0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
  const XcbPtr<xcb_xkb_get_map_reply_t> reply(xcb_xkb_get_map_reply(connection_.xcb(), cookie, nullptr));
  if (!reply) return;
  xcb_xkb_get_map_map_t map;
  xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(reply.get()), reply->nTypes, reply->nKeySyms,
                             reply->nKeyActions, reply->totalActions, reply->totalKeyBehaviors,
                             reply->virtualMods, reply->totalKeyExplicit, reply->totalModMapKeys,
                             reply->totalVModMapKeys, reply->present, &map);
  unsigned int keycode = reply->firstKeySym;
  auto key = xcb_xkb_get_map_map_syms_rtrn_iterator(reply.get(), &map);
  for (; key.rem > 0; xcb_xkb_key_sym_map_next(&key), ++keycode) {
    if ((key.data->groupInfo & 0x0f) == 0 || keycode > 255) continue;
    const xcb_keysym_t* keysyms = xcb_xkb_key_sym_map_syms(key.data);
    for (unsigned int group = 0; group < mostGroups; ++group) {
      const unsigned int index = groupWithin(group, key.data->groupInfo) * key.data->width;
      if (index < key.data->nSyms) keysymsByGroup_[group][keycode] = keysyms[index];
    }
  }
}

uint32_t X11Keyboard::keysymIn(unsigned int group, xcb_keycode_t keycode) const {
  return group < keysymsByGroup_.size() ? keysymsByGroup_[group][keycode] : 0;
}

uint32_t X11Keyboard::keysym(xcb_keycode_t keycode) {
  loadLayout();
  return keysymIn(group_, keycode);
}

std::optional<xcb_keycode_t> X11Keyboard::keycodeFor(uint32_t keysym) {
  loadLayout();
  for (unsigned int i = 0; i < mostGroups; ++i) {
    const unsigned int group = (group_ + i) % mostGroups;
    for (unsigned int keycode = 8; keycode < 256; ++keycode) {
      if (keysymIn(group, static_cast<xcb_keycode_t>(keycode)) == keysym) {
        return static_cast<xcb_keycode_t>(keycode);
      }
    }
  }
  return std::nullopt;
}

std::vector<xcb_keycode_t> X11Keyboard::keysDown() const {
  const auto cookie = xcb_query_keymap(connection_.xcb());
  const XcbPtr<xcb_query_keymap_reply_t> reply(xcb_query_keymap_reply(connection_.xcb(), cookie, nullptr));
  std::vector<xcb_keycode_t> down;
  if (!reply) return down;
  for (unsigned int keycode = 8; keycode < 256; ++keycode) {
    if (reply->keys[keycode / 8] & (1u << (keycode % 8))) down.push_back(static_cast<xcb_keycode_t>(keycode));
  }
  return down;
}

}  // namespace lumeno
