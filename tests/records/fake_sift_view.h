// A sifter window for the tests: scripted answers, and a record of what was shown.
#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "commands/command_table.h"
#include "core/dispatcher.h"
#include "records/sift_view.h"

namespace zv::test {

struct ShownBox {
  std::string title, text;
  MsgIcon icon = MsgIcon::None;
};

// Counts what frmIndexing was told; `onLine` runs at each line, the build's yield:
// tests raise the interrupt there.
struct FakeIndexing : JobProgress {
  void jobStarted(const Start& start) override {
    fileSize = std::to_string(start.fileSize);
    title = start.title;
  }
  void lineDone(int32_t n, int32_t) override {
    lastLine = n;
    if (onLine) onLine(n);
  }
  void recordDone(int32_t n) override { lastRecord = n; }
  void jobFinished(std::string_view, std::string_view) override { ++finished; }
  void jobEnded(JobOutcome) override { ++closed; }
  std::string fileSize, title;
  int32_t lastLine = 0, lastRecord = 0;
  int finished = 0, closed = 0;
  std::function<void(int32_t)> onLine;
};

// What frmWriting was told: its captions, the records, the files and the most lines.
struct FakeWriting : JobProgress {
  void jobStarted(const Start& start) override {
    captions.emplace_back(start.title);
    shown = true;
  }
  void recordDone(int32_t n) override { records.push_back(n); }
  void caption(std::string_view name) override { files.emplace_back(name); }
  void lineDone(int32_t n, int32_t) override {
    lines = std::max(lines, n);
    if (onLine) onLine(n);
  }
  void jobEnded(JobOutcome) override {
    shown = false;
    ++ended;
  }
  std::vector<std::string> captions, files;
  std::vector<int32_t> records;
  int32_t lines = 0;
  int ended = 0;
  bool shown = false;
  std::function<void(int32_t)> onLine;
};

class FakeSiftView final : public SiftView {
 public:
  explicit FakeSiftView(JobState& job) : job_(job) {}

  // Scripted answers, taken in order; an empty queue answers Cancel (or No).
  std::deque<std::optional<std::string>> files, keepFiles;
  std::deque<std::string> inputs;
  std::deque<bool> answers;

  // What the window showed.
  std::vector<ShownBox> boxes, questions;
  std::vector<std::string> prompts;   // input box prompts, title + "|" + prompt
  std::vector<std::string> errorForms;
  std::map<SiftPanel, std::string> panels;
  std::string text, viewMode;
  uint32_t viewColor = 0;
  int textSets = 0;
  bool partial = false, sifterShown = false, keepList = false;
  int32_t selStart_ = 0, selLength_ = 0;
  std::vector<std::string> keepItems;
  FakeIndexing indexing;
  FakeWriting writing;

  void RunCommand(int32_t n) override {
    CommandContext context{job_, NoProgress(), static_cast<SiftView*>(this)};
    const JobResult r = zv::RunCommand(n, context, CommandTable());
    if (r.error) errorForms.push_back(ErrorFormText(job_.gsErrNumber, job_.gsErrText, r.error->reason()));
  }
  void showErrorForm(std::string_view t) override { errorForms.emplace_back(t); }
  std::optional<std::string> chooseFile(std::string_view) override { return take(files); }
  void setRecordText(std::string_view bytes) override {
    text = bytes;
    ++textSets;
    selStart_ = selLength_ = 0;
  }
  std::string recordText() const override { return text; }
  int32_t selStart() const override { return selStart_; }
  int32_t selLength() const override { return selLength_; }
  void selectText(int32_t start, int32_t length) override {
    selStart_ = start;
    selLength_ = length;
  }
  void setPanel(SiftPanel p, std::string_view t) override { panels[p] = t; }
  void setViewMode(std::string_view mode, uint32_t color) override {
    viewMode = mode;
    viewColor = color;
  }
  void setPartialDisplay(bool visible) override { partial = visible; }
  bool keepListVisible() const override { return keepList; }
  void showKeepList(bool visible) override { keepList = visible; }
  void clearKeepList() override { keepItems.clear(); }
  void addKeepListItem(std::string_view t) override { keepItems.emplace_back(t); }
  void message(const Message& m, MsgIcon icon) override { boxes.push_back({m.title, m.text, icon}); }
  bool askYesNo(const Message& m, MsgIcon icon) override {
    questions.push_back({m.title, m.text, icon});
    if (answers.empty()) return false;
    const bool a = answers.front();
    answers.pop_front();
    return a;
  }
  std::string inputBox(std::string_view prompt, std::string_view title) override {
    prompts.push_back(std::string(title) + "|" + std::string(prompt));
    if (inputs.empty()) return "";
    std::string a = inputs.front();
    inputs.pop_front();
    return a;
  }
  std::optional<std::string> askKeepFile() override { return take(keepFiles); }
  JobProgress& frmWriting() override { return writing; }
  JobProgress& frmIndexing() override { return indexing; }
  void showSifter() override { sifterShown = true; }
  void hideSifter() override { sifterShown = false; }

  std::string panel(SiftPanel p) const {
    const auto it = panels.find(p);
    return it == panels.end() ? std::string() : it->second;
  }
  std::string lastBox() const { return boxes.empty() ? std::string() : boxes.back().title + ": " + boxes.back().text; }

 private:
  static std::optional<std::string> take(std::deque<std::optional<std::string>>& q) {
    if (q.empty()) return std::nullopt;
    auto a = q.front();
    q.pop_front();
    return a;
  }

  JobState& job_;
};

}  // namespace zv::test
