#include "onboarding/onboarding_state.h"

#include <QPointer>

namespace lumeno {

using namespace Qt::StringLiterals;

OnboardingState::OnboardingState(const OnboardingServices& services, std::function<void()> onFinish)
    : services_(services),
      onFinish_(std::move(onFinish)),
      permissions_(services.accessibility, services.urlOpener, services.fileManager, services.calendarStore),
      preferences_(services.settings) {}

QString OnboardingState::primaryLabel() const {
  switch (scene_) {
    case Scene::welcome:
      return u"Get started"_s;
    case Scene::capabilities:
      return u"Set permissions"_s;
    case Scene::permission:
      return u"Personalize"_s;
    case Scene::personalize:
      return u"Finish setup"_s;
    case Scene::ready:
      return u"Start using Lumeno"_s;
  }
  Q_UNREACHABLE();
}

QString OnboardingState::primarySymbol() const {
  return scene_ == Scene::ready ? u"checkmark"_s : u"arrow.right"_s;
}

void OnboardingState::move(int step) {
  const int target = sceneIndex() + step;
  if (step == 0 || target < 0 || target >= sceneCount()) return;
  scene_ = static_cast<Scene>(target);
  if (scene_ == Scene::permission) permissions_.appear();
  if (scene_ == Scene::ready) {
    const bool isTrayShown = !services_.isTrayShown || services_.isTrayShown();
    trayNote_ = isTrayShown ? QString() : u"There is no tray here: start Lumeno again to open Settings."_s;
    launchNote_.clear();
    Q_EMIT notesChanged();
  }
  Q_EMIT sceneChanged();
}

void OnboardingState::activatePrimary() {
  if (scene_ == Scene::ready) {
    onFinish_();
  } else {
    move(1);
  }
}

void OnboardingState::setUpLater() {
  if (canSetUpLater()) onFinish_();
}

void OnboardingState::openTextEdit() {
  services_.launcher.openTextEditor(
      noteIfFailed(u"There is no text editor to open. Select text in any application instead."_s));
}

void OnboardingState::openFinder() {
  services_.launcher.openHomeFolder(
      noteIfFailed(u"There is no file manager to open your home folder with."_s));
}

std::function<void(bool)> OnboardingState::noteIfFailed(const QString& text) {
  return [self = QPointer(this), text](bool opened) {
    if (!self) return;
    self->launchNote_ = opened ? QString() : text;
    Q_EMIT self->notesChanged();
  };
}

}  // namespace lumeno
