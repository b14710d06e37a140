// What the suites of the DIALOG filters of specified types share: an observer that also
// records the types' odometers.
#pragma once

#include <utility>
#include <vector>

#include "filters/dialog_family.h"

namespace zv::test {

// Passes everything on to `inner` (the suite's recording observer) and keeps each
// type odometer change as {type, count}.
class TypeRecorder final : public TypeProgress {
 public:
  explicit TypeRecorder(JobProgress& inner) : inner_(inner) {}

  void ClearStatusPanels() override { inner_.ClearStatusPanels(); }
  void jobStarted(const Start& start) override { inner_.jobStarted(start); }
  void caption(std::string_view text) override { inner_.caption(text); }
  void lineDone(int32_t line, int32_t total) override { inner_.lineDone(line, total); }
  void recordDone(int32_t record) override { inner_.recordDone(record); }
  void jobFinished(std::string_view finish, std::string_view elapsed) override { inner_.jobFinished(finish, elapsed); }
  void typeRecordDone(int type, int32_t count) override { types.emplace_back(type, count); }

  std::vector<std::pair<int, int32_t>> types;

 private:
  JobProgress& inner_;
};

}  // namespace zv::test
