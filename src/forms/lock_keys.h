// KeyStat1: the state of four lock keys for the status line's pnlKeyStatus panels.
#pragma once

#include <array>
#include <filesystem>
#include <string>

namespace zv::forms {

// The four locks watched, by index of pnlKeyStatus.
enum class LockKey { Caps = 0, Num = 1, Scroll = 2, Insert = 3 };

// Qt tells a program nothing of lock states. Caps, Num and Scroll Lock are read from
// the keyboard LEDs that Linux lists under /sys/class/leds ("input3::capslock" and
// the like), which any user may read. Where there are none (a remote or virtual
// display) a lock follows the presses of its key that the program's windows see,
// from off at start. Insert has no LED: it is the program's own overwrite toggle and
// always follows its key.
class KeyLocks {
 public:
  explicit KeyLocks(std::filesystem::path ledsDir = "/sys/class/leds");

  // A lock key was pressed in one of the program's windows.
  void keyPressed(LockKey key);
  // Reads the LEDs again. Returns true when a state changed since the last look.
  bool poll();

  bool isOn(LockKey key) const { return on_[index(key)]; }
  // pnlKeyStatus's text: the tag text while the key is on, empty while it is off.
  std::string panelText(LockKey key) const;
  static const char* tagText(LockKey key);
  bool readsLeds(LockKey key) const { return !ledFiles_[index(key)].empty(); }

 private:
  static std::size_t index(LockKey key) { return static_cast<std::size_t>(key); }

  std::array<bool, 4> on_{};
  std::array<std::filesystem::path, 4> ledFiles_;
};

}  // namespace zv::forms
