// The file display control of the viewer: draws only the lines in sight of a file of any
// size, over the display logic of src/viewer, and turns its events into signals.
#pragma once

#include <cstdint>

#include <QAbstractScrollArea>
#include <QTimer>

#include "viewer/file_display.h"

namespace zv::forms {

class FileDisplayWidget : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit FileDisplayWidget(QWidget* parent = nullptr);
  ~FileDisplayWidget() override;

  // The logic under the control, for the properties that change nothing drawn
  // (selection values, step position, line count, search text).
  FileDisplay& display() { return display_; }
  const FileDisplay& display() const { return display_; }

  // The properties that change what is drawn; each repaints.
  QString fileName() const;
  // Setting opens the file (ZvError when it cannot); empty closes and frees it.
  void setFileName(const QString& name);
  void setSearchText(const QString& text);
  void setTopLine(int64_t line);
  void clearSelection();
  // What a click on line n does.
  bool selectLine(int64_t line);
  QString selectedText() const;

  // Rows of text in sight.
  int pageLines() const;
  // True once a paint has shown text of the file last set.
  bool firstScreenShown() const { return firstScreenShown_; }

 signals:
  void LoadComplete();
  void SearchRequest();
  void SearchComplete();
  void TopIndexChange();
  void MouseMove();
  // The first paint that shows text of a newly set file.
  void FirstScreen();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;

 private:
  // The logic's events, passed on as the control's signals.
  class Events : public FileDisplayEvents {
   public:
    explicit Events(FileDisplayWidget& w) : w_(w) {}
    void LoadComplete() override;
    void SearchRequest() override;
    void SearchComplete() override;
    void TopIndexChange() override;

   private:
    FileDisplayWidget& w_;
  };

  void updateScrollBars();
  void updateMetrics();
  int64_t lineAt(int y) const;
  void pollLoad();

  Events events_{*this};
  FileDisplay display_{events_};
  QTimer loadTimer_;
  int lineHeight_ = 16;
  int charWidth_ = 8;
  int ascent_ = 12;
  int64_t widestSeen_ = 0;
  int64_t anchorLine_ = 0;
  bool firstScreenShown_ = false;
  bool syncingScrollBar_ = false;
};

}  // namespace zv::forms
