#include "platform/x11/x11_keystroke_sender.h"

#include <xcb/xtest.h>

#include "platform/file_manager.h"

namespace lumeno {

using namespace std::chrono_literals;

namespace {

constexpr auto lookInterval = 10ms;
constexpr int mostLooks = 30;

constexpr uint32_t insertKeysym = 0xff63;
constexpr uint32_t controlKeysym = 0xffe3;
constexpr xcb_keycode_t positionOfC = 54;
constexpr xcb_keycode_t positionOfV = 55;

}  // namespace

X11KeystrokeSender::X11KeystrokeSender(X11Connection& connection, Workspace& workspace, X11Input& input,
                                       Scheduler& scheduler)
    : connection_(connection), workspace_(workspace), input_(input), scheduler_(scheduler) {}

Job X11KeystrokeSender::sendCopy(uint64_t window, std::function<void(Outcome)> done) {
  return start({insertKeysym, std::nullopt, Audience::any}, window, std::move(done));
}

Job X11KeystrokeSender::sendCopyFiles(uint64_t window, std::function<void(Outcome)> done) {
  return start({'c', positionOfC, Audience::fileManagers}, window, std::move(done));
}

Job X11KeystrokeSender::sendPaste(uint64_t window, std::function<void(Outcome)> done) {
  return start({'v', positionOfV, Audience::any}, window, std::move(done));
}

Job X11KeystrokeSender::start(const Command& command, uint64_t window, std::function<void(Outcome)> done) {
  auto request = std::make_shared<Request>();
  request->command = command;
  request->window = window;
  request->done = std::move(done);
  request->looksLeft = mostLooks;
  request->wait = scheduler_.after(0ms, [this, weak = std::weak_ptr(request)] {
    if (const auto strong = weak.lock()) look(strong);
  });
  return Job([request] { request->wait.cancel(); });
}

void X11KeystrokeSender::look(const std::shared_ptr<Request>& request) {
  const bool isQuiet = input_.keyboard().keysDown().empty();
  if ((!isInFront(*request) || !isQuiet) && request->looksLeft-- > 0) {
    request->wait = scheduler_.after(lookInterval, [this, weak = std::weak_ptr(request)] {
      if (const auto strong = weak.lock()) look(strong);
    });
    return;
  }
  request->done(send(*request));
}

KeystrokeSender::Outcome X11KeystrokeSender::send(const Request& request) {
  if (!isInFront(request) || workspace_.frontmostApplication()->isTerminal) return Outcome::refused;
  const Command& command = request.command;
  if (command.audience == Audience::fileManagers && !isFileManager(workspace_.frontmostApplication()))
    return Outcome::refused;
  X11Keyboard& keyboard = input_.keyboard();
  const auto control = keyboard.keycodeFor(controlKeysym);
  auto key = keyboard.keycodeFor(command.keysym);
  if (!key) key = command.position;
  if (!control || !key) return Outcome::refused;

  const auto down = keyboard.keysDown();
  if (!down.empty()) {
    std::vector<X11Input::SyntheticKey> lifts;
    for (const xcb_keycode_t keycode : down) lifts.push_back({keycode, false});
    post(lifts);
    // What could not be lifted would turn the combination into another one.
    if (keyboard.queryModifiers() != 0) return Outcome::refused;
  }
  post({{*control, true}, {*key, true}, {*key, false}, {*control, false}});
  return Outcome::sent;
}

bool X11KeystrokeSender::isInFront(const Request& request) {
  const auto front = workspace_.frontmostApplication();
  return front && front->window == request.window &&
         front->bundleIdentifier != workspace_.ownBundleIdentifier();
}

void X11KeystrokeSender::post(const std::vector<X11Input::SyntheticKey>& keys) {
  input_.expectSynthetic(keys);
  for (const auto& key : keys) {
    xcb_test_fake_input(connection_.xcb(), key.isPress ? XCB_KEY_PRESS : XCB_KEY_RELEASE, key.keycode,
                        XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
  }
  connection_.flush();
}

}  // namespace lumeno
