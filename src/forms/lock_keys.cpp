// Lock key states from the keyboard LEDs, or from the key presses seen.
#include "forms/lock_keys.h"

#include <fstream>
#include <system_error>

namespace zv::forms {

namespace {

bool endsWith(const std::string& s, const std::string& tail) {
  return s.size() >= tail.size() && s.compare(s.size() - tail.size(), tail.size(), tail) == 0;
}

bool ledIsLit(const std::filesystem::path& brightness) {
  std::ifstream in(brightness);
  int value = 0;
  return (in >> value) && value > 0;
}

}  // namespace

KeyLocks::KeyLocks(std::filesystem::path ledsDir) {
  static constexpr const char* kSuffixes[3] = {"::capslock", "::numlock", "::scrolllock"};
  std::error_code ec;
  for (const auto& entry : std::filesystem::directory_iterator(ledsDir, ec)) {
    const std::string name = entry.path().filename().string();
    for (std::size_t i = 0; i < 3; ++i) {
      // The first keyboard found stands for all of them.
      if (endsWith(name, kSuffixes[i]) && ledFiles_[i].empty()) ledFiles_[i] = entry.path() / "brightness";
    }
  }
  poll();
}

void KeyLocks::keyPressed(LockKey key) {
  if (!readsLeds(key)) on_[index(key)] = !on_[index(key)];
}

bool KeyLocks::poll() {
  bool changed = false;
  for (std::size_t i = 0; i < 3; ++i) {
    if (ledFiles_[i].empty()) continue;
    const bool lit = ledIsLit(ledFiles_[i]);
    changed = changed || lit != on_[i];
    on_[i] = lit;
  }
  return changed;
}

const char* KeyLocks::tagText(LockKey key) {
  static constexpr const char* kTags[4] = {"CAPS", "NUM", "SCRL", "INS"};
  return kTags[index(key)];
}

std::string KeyLocks::panelText(LockKey key) const { return isOn(key) ? tagText(key) : ""; }

}  // namespace zv::forms
