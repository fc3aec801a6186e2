#include "platform/freedesktop/canberra_system_sound.h"

#include <canberra.h>

#include <chrono>
#include <semaphore>
#include <system_error>
#include <thread>

namespace lumeno {

using namespace Qt::StringLiterals;

/// The connection to the sound system, used by whoever has acquired it.
class CanberraSystemSound::Player {
 public:
  ~Player() {
    if (context_) ca_context_destroy(context_);
  }

  void playFirstOf(const std::vector<const char*>& events) {
    if (!context_ && ca_context_create(&context_) != CA_SUCCESS) {
      context_ = nullptr;
      return;
    }
    for (const char* event : events) {
      const int result =
          ca_context_play(context_, 0, CA_PROP_EVENT_ID, event, CA_PROP_MEDIA_ROLE, "event", nullptr);
      // Only a theme without the sound is a reason to try another.
      if (result != CA_ERROR_NOTFOUND) return;
    }
  }

  std::binary_semaphore available{1};

 private:
  ca_context* context_ = nullptr;
};

CanberraSystemSound::CanberraSystemSound() : player_(std::make_shared<Player>()) {}

CanberraSystemSound::~CanberraSystemSound() {
  // A sound that is just being started should not meet the end of the program; one that hangs is left alone.
  (void)player_->available.try_acquire_for(std::chrono::milliseconds(300));
}

void CanberraSystemSound::play(const QString& name) {
  // The theme has no sound of that name; these are its short cues for something finished.
  if (name == "Tink"_L1) playFirstOf({"complete", "message-new-instant", "bell"});
}

void CanberraSystemSound::beep() {
  playFirstOf({"bell"});
}

void CanberraSystemSound::playFirstOf(std::vector<const char*> events) {
  // While the sound system does not answer, a further cue is dropped: late, it would say nothing.
  if (!player_->available.try_acquire()) return;
  try {
    // A thread per sound: none waits in between, and one that hangs holds up nobody.
    std::thread([player = player_, events = std::move(events)] {
      player->playFirstOf(events);
      player->available.release();
    }).detach();
  } catch (const std::system_error&) {
    player_->available.release();
  }
}

}  // namespace lumeno
