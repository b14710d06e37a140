// The files a job writes, removed unless the job commits them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zv {

// The ways a job ends without success, as the outputs see them.
enum class WayOut : uint8_t {
  ZeroRecords = 1,  // nothing was found to write
  Interrupted = 2,  // the user stopped the job
  Failed = 4,       // an error stopped it (Refused counts here too)
};

// Which of those ways out leave an output in place.
struct KeepOn {
  uint8_t ways = 0;
  constexpr KeepOn() = default;
  constexpr KeepOn(WayOut w) : ways(static_cast<uint8_t>(w)) {}  // NOLINT: one way reads naturally
  constexpr KeepOn operator|(WayOut w) const {
    KeepOn k = *this;
    k.ways = static_cast<uint8_t>(k.ways | static_cast<uint8_t>(w));
    return k;
  }
  constexpr bool has(WayOut w) const { return (ways & static_cast<uint8_t>(w)) != 0; }
};

// Holds the names of a job's outputs from the moment they are opened. Unless commit()
// is called, the destructor removes them, so a thrown error cleans up by construction.
//  - add(): an output the job makes; removed on every way out but those named in KeepOn.
//  - alsoOnFailure(): a file of an earlier run that belongs with the outputs (the
//    sifter's .WRK); removed on interrupt and error, not on zero records.
//  - appendTo(): an existing file the job adds to (a keep file); on every way out but
//    success it is cut back to its length before the job, or removed if the job made it.
class OutputFiles {
 public:
  OutputFiles() = default;
  ~OutputFiles();
  OutputFiles(const OutputFiles&) = delete;
  OutputFiles& operator=(const OutputFiles&) = delete;

  void add(const std::string& path, KeepOn keepOn = {});
  void alsoOnFailure(const std::string& path);
  // Notes the file's length now; a second call for the same path does nothing.
  void appendTo(const std::string& path);
  // Takes a made file off the list: it is the job's to keep or delete now.
  void forget(const std::string& path);

  // Keep everything from now on.
  void commit() noexcept { committed_ = true; }
  // Removes (or cuts back) what does not outlive `way`; then nothing more is done.
  void settle(WayOut way) noexcept;
  // Compatibility names for the zero-record path and for interrupt and error.
  void discardOutputs() noexcept { settle(WayOut::ZeroRecords); }
  void discardAll() noexcept { settle(WayOut::Failed); }

  // The outputs that exist now, in the order they were added (those a job deleted
  // itself, such as an empty .FSC, are left out).
  std::vector<std::string> existing() const;

 private:
  struct Output {
    std::string path;
    KeepOn keepOn;
  };
  struct Appended {
    std::string path;
    int64_t sizeBefore;  // -1: the file did not exist
  };
  std::vector<Output> outputs_;
  std::vector<std::string> onFailure_;
  std::vector<Appended> appended_;
  bool committed_ = false;
};

// Deletes `path` if Exist finds it. True when it was there.
bool KillIfExists(const std::string& path) noexcept;

}  // namespace zv
