// The file display's properties over a mapped file and its background line index.
#include "viewer/file_display.h"

#include <algorithm>

#include "viewer/text_search.h"

namespace zv {

FileDisplay::FileDisplay(FileDisplayEvents& events) : events_(events) {}

FileDisplay::~FileDisplay() { close(); }

void FileDisplay::close() {
  // The index reads the mapping: it stops before the file goes.
  index_.reset();
  file_.close();
  fileName_.clear();
  loadCompleteRaised_ = false;
  selLine_ = selStart_ = selLength_ = 0;
  stepPosition_ = 0;
  reachedLine_ = 0;
  topLine_ = 1;
}

void FileDisplay::setFileName(const std::string& name) {
  close();
  if (name.empty()) return;
  file_ = MappedFile(name);
  fileName_ = name;
  index_ = std::make_unique<LineIndex>(file_.bytes());
  if (!index_->complete()) index_->start(loadNotifier_);
}

bool FileDisplay::poll() {
  if (!index_ || loadCompleteRaised_ || !index_->complete()) return false;
  loadCompleteRaised_ = true;
  events_.LoadComplete();
  return true;
}

void FileDisplay::waitForLoad() {
  if (index_) index_->wait();
  poll();
}

int64_t FileDisplay::lineCount() const { return index_ ? index_->lineCount() : 0; }

void FileDisplay::setTopLine(int64_t n) {
  const int64_t last = std::max<int64_t>({1, lineCount(), reachedLine_});
  n = std::clamp<int64_t>(n, 1, last);
  if (n == topLine_) return;
  topLine_ = n;
  events_.TopIndexChange();
}

LineSpan FileDisplay::lineSpan(int64_t n) const { return index_ ? index_->lineSpan(n) : LineSpan{}; }

LineSpan FileDisplay::spanAt(int64_t n, int64_t start) const {
  return index_ ? index_->spanAt(n, start) : LineSpan{};
}

int64_t FileDisplay::lineOfPosition(int64_t position) const {
  if (!index_ || position < 1 || position > file_.size()) return 0;
  return index_->lineOfOffset(position - 1);
}

void FileDisplay::setSearchText(const std::string& text) {
  searchText_ = text;
  if (text.empty()) return;
  events_.SearchRequest();
  const int64_t from = selStart_ > 0 ? selStart_ - 1 : 0;
  const int64_t hit = isOpen() ? FindText(file_.bytes(), text, from) : -1;
  if (hit >= 0) {
    selStart_ = hit + 1;
    selLength_ = static_cast<int64_t>(text.size());
    selLine_ = index_->lineOfOffset(hit);
    reachedLine_ = std::max(reachedLine_, selLine_);
    if (selLine_ < topLine_ || selLine_ >= topLine_ + pageLines_) setTopLine(selLine_);
  } else {
    selLength_ = 0;
  }
  events_.SearchComplete();
}

std::string FileDisplay::selectedText() const {
  if (selStart_ < 1 || selLength_ <= 0 || selStart_ > file_.size()) return {};
  const int64_t from = selStart_ - 1;
  const int64_t length = std::min(selLength_, file_.size() - from);
  return std::string(file_.bytes().substr(static_cast<std::size_t>(from), static_cast<std::size_t>(length)));
}

bool FileDisplay::selectLine(int64_t n) { return selectLines(n, n); }

bool FileDisplay::selectLines(int64_t from, int64_t to) {
  const int64_t first = std::min(from, to);
  const int64_t last = std::max(from, to);
  const LineSpan a = lineSpan(first);
  const LineSpan b = first == last ? a : lineSpan(last);
  if (!a.valid() || !b.valid()) return false;
  selLine_ = to;
  selStart_ = a.start + 1;
  // A line is selected with its line end, so an empty line is a selection too; a line
  // longer than the display looks ahead is selected as far as it is shown.
  const int64_t end = b.next >= 0 ? b.next : b.textEnd;
  selLength_ = end - a.start;
  return true;
}

void FileDisplay::clearSelection() { selLine_ = selStart_ = selLength_ = 0; }

}  // namespace zv
