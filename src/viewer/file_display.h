// The file display: a read-only, line-oriented view of one file of any size, with its
// properties (file name, search text, selection, top line, step position, line count)
// and its events. The window of the viewer owns one and draws what it shows.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "viewer/line_index.h"
#include "viewer/mapped_file.h"

namespace zv {

// What the display tells its owner. Every event but LoadComplete is raised inside the
// call that causes it; LoadComplete is raised by poll() on the owner's thread once the
// background index is complete.
class FileDisplayEvents {
 public:
  virtual ~FileDisplayEvents() = default;
  virtual void LoadComplete() {}
  virtual void SearchRequest() {}
  virtual void SearchComplete() {}
  virtual void TopIndexChange() {}
};

// Positions (selection start, step position) count bytes of the file from 1; 0 is
// none, and a search from 0 begins at the top. Line numbers count from 1.
class FileDisplay {
 public:
  explicit FileDisplay(FileDisplayEvents& events);
  ~FileDisplay();
  FileDisplay(const FileDisplay&) = delete;
  FileDisplay& operator=(const FileDisplay&) = delete;

  // --- file name ------------------------------------------------------------------------
  // Setting a name maps the file and starts its index in the background; the first
  // lines can be shown at once. An empty name closes the file and frees it. A file
  // that cannot be opened throws ZvError, and the display is then empty.
  const std::string& fileName() const { return fileName_; }
  void setFileName(const std::string& name);
  bool isOpen() const { return file_.isOpen(); }
  int64_t fileSize() const { return file_.size(); }
  std::string_view bytes() const { return file_.bytes(); }

  // Called from the index's own thread when the index is complete, so that the owner
  // can call poll() on its thread soon. Set before the file name.
  void setLoadNotifier(std::function<void()> notify) { loadNotifier_ = std::move(notify); }
  // Raises LoadComplete if the index has become complete since it was last raised;
  // true when it did.
  bool poll();
  // Waits for the index, then polls.
  void waitForLoad();
  bool loadComplete() const { return loadCompleteRaised_; }

  // --- search text ---------------------------------------------------------------------
  // Setting a text raises SearchRequest, searches from the selection start, and
  // raises SearchComplete. A match becomes the selection (start, length, its line) and
  // is scrolled into view; no match leaves the selection length 0. An empty text is
  // kept and nothing is searched.
  const std::string& searchText() const { return searchText_; }
  void setSearchText(const std::string& text);

  // --- selection -------------------------------------------------------------------------
  int64_t selLine() const { return selLine_; }
  int64_t selStart() const { return selStart_; }
  int64_t selLength() const { return selLength_; }
  void setSelLine(int64_t line) { selLine_ = line; }
  void setSelStart(int64_t position) { selStart_ = position; }
  void setSelLength(int64_t length) { selLength_ = length; }
  // The bytes from the selection start, selection length of them (within the file).
  std::string selectedText() const;
  // A click on line n: the whole line with its line end is selected. False when the
  // file has no such line.
  bool selectLine(int64_t n);
  // Lines `from` to `to` (either way round) selected as one stretch; the selection
  // line is `to`, where the pointer is.
  bool selectLines(int64_t from, int64_t to);
  void clearSelection();

  // --- lines ------------------------------------------------------------------------------
  // Lines indexed so far; every line of the file once the load is complete.
  int64_t lineCount() const;
  int64_t topLine() const { return topLine_; }
  // Scrolls: the top line becomes n, kept between 1 and the last line reached so far.
  // Raises TopIndexChange when it changes.
  void setTopLine(int64_t n);
  // The rows the display has room for; a match outside them is scrolled to the top.
  void setPageLines(int64_t rows) { pageLines_ = rows > 0 ? rows : 1; }
  int64_t pageLines() const { return pageLines_; }
  // Where line n lies; invalid when there is no line n.
  LineSpan lineSpan(int64_t n) const;
  // The same for line n that starts at `start`, for walking down from the top line.
  LineSpan spanAt(int64_t n, int64_t start) const;
  // The line that holds byte position `position` (from 1).
  int64_t lineOfPosition(int64_t position) const;
  const LineIndex* index() const { return index_.get(); }

  // --- step position ---------------------------------------------------------------------
  int64_t stepPosition() const { return stepPosition_; }
  void setStepPosition(int64_t position) { stepPosition_ = position; }

 private:
  void close();

  FileDisplayEvents& events_;
  std::function<void()> loadNotifier_;
  std::string fileName_;
  MappedFile file_;
  std::unique_ptr<LineIndex> index_;
  bool loadCompleteRaised_ = false;
  std::string searchText_;
  int64_t selLine_ = 0;
  int64_t selStart_ = 0;
  int64_t selLength_ = 0;
  int64_t topLine_ = 1;
  int64_t pageLines_ = 1;
  int64_t stepPosition_ = 0;
  // The furthest line a search has found, which may lie beyond what is indexed yet.
  int64_t reachedLine_ = 0;
};

}  // namespace zv
