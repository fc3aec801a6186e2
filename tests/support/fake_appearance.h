#pragma once

#include "platform/appearance.h"

namespace lumeno {

class FakeAppearance final : public Appearance {
 public:
  Observable<AppearancePreferences>& preferences() override { return preferences_; }
  void set(const AppearancePreferences& preferences) { preferences_.set(preferences); }

 private:
  Observable<AppearancePreferences> preferences_;
};

}  // namespace lumeno
