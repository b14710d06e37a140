// The file display control: the lines in sight drawn straight from the mapped file, one
// byte a character cell, while the line index grows behind it.
#include "forms/file_display_widget.h"

#include <algorithm>
#include <climits>

#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

namespace zv::forms {

namespace {

constexpr int kLeftMargin = 3;
// While the index is built, the scroll range follows it this often.
constexpr int kLoadTickMs = 40;

// Bytes as they are drawn: one cell each, Latin-1, control characters as blanks.
QString cells(std::string_view bytes) {
  QString text(static_cast<qsizetype>(bytes.size()), QChar(u' '));
  QChar* out = text.data();
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto c = static_cast<unsigned char>(bytes[i]);
    if (c >= 32 && c != 127) out[i] = QChar(static_cast<char16_t>(c));
  }
  return text;
}

int clampToInt(int64_t v) { return static_cast<int>(std::clamp<int64_t>(v, INT_MIN, INT_MAX)); }

}  // namespace

void FileDisplayWidget::Events::LoadComplete() {
  w_.loadTimer_.stop();
  w_.updateScrollBars();
  w_.viewport()->update();
  emit w_.LoadComplete();
}

void FileDisplayWidget::Events::SearchRequest() {
  emit w_.SearchRequest();
  // A search through a gigabyte takes a moment: the wait cursor until it ends.
  QApplication::setOverrideCursor(Qt::WaitCursor);
}

void FileDisplayWidget::Events::SearchComplete() {
  QApplication::restoreOverrideCursor();
  emit w_.SearchComplete();
  w_.viewport()->update();
}

void FileDisplayWidget::Events::TopIndexChange() {
  w_.updateScrollBars();
  w_.viewport()->update();
  emit w_.TopIndexChange();
}

FileDisplayWidget::FileDisplayWidget(QWidget* parent) : QAbstractScrollArea(parent) {
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setMouseTracking(true);
  viewport()->setCursor(Qt::IBeamCursor);
  QPalette p = viewport()->palette();
  p.setColor(QPalette::Base, Qt::white);
  p.setColor(QPalette::Text, Qt::black);
  viewport()->setPalette(p);
  viewport()->setBackgroundRole(QPalette::Base);
  setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  loadTimer_.setInterval(kLoadTickMs);
  connect(&loadTimer_, &QTimer::timeout, this, &FileDisplayWidget::pollLoad);
  // The index's thread says when it is done; LoadComplete is raised here, on ours.
  display_.setLoadNotifier([this] { QMetaObject::invokeMethod(this, &FileDisplayWidget::pollLoad, Qt::QueuedConnection); });
  updateMetrics();
}

FileDisplayWidget::~FileDisplayWidget() {
  // The index thread stops while the control is whole.
  display_.setFileName({});
}

QString FileDisplayWidget::fileName() const { return QFile::decodeName(QByteArray::fromStdString(display_.fileName())); }

void FileDisplayWidget::setFileName(const QString& name) {
  firstScreenShown_ = false;
  widestSeen_ = 0;
  anchorLine_ = 0;
  loadTimer_.stop();
  try {
    display_.setFileName(QFile::encodeName(name).toStdString());
  } catch (...) {
    updateScrollBars();
    viewport()->update();
    throw;
  }
  syncingScrollBar_ = true;
  horizontalScrollBar()->setValue(0);
  syncingScrollBar_ = false;
  if (display_.isOpen()) loadTimer_.start();
  updateScrollBars();
  viewport()->update();
}

void FileDisplayWidget::pollLoad() {
  updateScrollBars();
  if (!display_.poll() && display_.index() != nullptr && display_.index()->complete()) loadTimer_.stop();
  if (!display_.isOpen()) loadTimer_.stop();
}

void FileDisplayWidget::setSearchText(const QString& text) {
  display_.setSearchText(text.toLatin1().toStdString());
  viewport()->update();
}

void FileDisplayWidget::setTopLine(int64_t line) {
  display_.setTopLine(line);
  viewport()->update();
}

void FileDisplayWidget::clearSelection() {
  display_.clearSelection();
  viewport()->update();
}

bool FileDisplayWidget::selectLine(int64_t line) {
  const bool selected = display_.selectLine(line);
  if (selected) anchorLine_ = line;
  viewport()->update();
  return selected;
}

QString FileDisplayWidget::selectedText() const {
  // Kept byte for byte: Latin-1 gives every byte a character of its own.
  return QString::fromLatin1(QByteArray::fromStdString(display_.selectedText()));
}

int FileDisplayWidget::pageLines() const { return std::max(1, viewport()->height() / lineHeight_); }

void FileDisplayWidget::updateMetrics() {
  const QFontMetrics fm(font());
  lineHeight_ = std::max(1, fm.lineSpacing());
  charWidth_ = std::max(1, fm.horizontalAdvance(QLatin1Char('M')));
  ascent_ = fm.ascent();
  display_.setPageLines(pageLines());
  updateScrollBars();
}

void FileDisplayWidget::updateScrollBars() {
  syncingScrollBar_ = true;
  QScrollBar* v = verticalScrollBar();
  const int64_t last = std::max<int64_t>({1, display_.lineCount(), display_.topLine()});
  v->setRange(1, clampToInt(last));
  v->setPageStep(pageLines());
  v->setSingleStep(1);
  v->setValue(clampToInt(display_.topLine()));
  QScrollBar* h = horizontalScrollBar();
  const int columns = std::max(1, (viewport()->width() - kLeftMargin) / charWidth_);
  h->setRange(0, clampToInt(std::max<int64_t>(0, widestSeen_ - columns + 1)));
  h->setPageStep(columns);
  syncingScrollBar_ = false;
}

void FileDisplayWidget::scrollContentsBy(int /*dx*/, int dy) {
  if (syncingScrollBar_) return;
  if (dy != 0) display_.setTopLine(verticalScrollBar()->value());
  viewport()->update();
}

int64_t FileDisplayWidget::lineAt(int y) const { return display_.topLine() + std::max(0, y) / lineHeight_; }

void FileDisplayWidget::paintEvent(QPaintEvent* /*event*/) {
  QPainter p(viewport());
  const QRect area = viewport()->rect();
  p.fillRect(area, viewport()->palette().color(QPalette::Base));
  if (!display_.isOpen()) return;
  p.setFont(font());

  const std::string_view bytes = display_.bytes();
  const auto size = static_cast<int64_t>(bytes.size());
  const int64_t column = horizontalScrollBar()->value();
  const int64_t columns = area.width() / charWidth_ + 2;
  const int rows = area.height() / lineHeight_ + 1;
  const int64_t selFrom = display_.selLength() > 0 ? display_.selStart() - 1 : -1;
  const int64_t selTo = selFrom + display_.selLength();
  const QColor ink = viewport()->palette().color(QPalette::Text);
  const QColor markBack = palette().color(QPalette::Active, QPalette::Highlight);
  const QColor markInk = palette().color(QPalette::Active, QPalette::HighlightedText);

  int64_t line = display_.topLine();
  LineSpan span = display_.lineSpan(line);
  int shown = 0;
  for (int row = 0; row < rows && span.valid(); ++row) {
    const int y = row * lineHeight_;
    widestSeen_ = std::max(widestSeen_, span.textEnd - span.start);
    const int64_t from = std::min(span.start + column, span.textEnd);
    const int64_t to = std::min(span.textEnd, from + columns);
    const QString text = cells(bytes.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from)));
    p.setPen(ink);
    p.drawText(kLeftMargin, y + ascent_, text);
    // The selection: its part of this line, to the right edge where it takes the
    // line end too.
    const int64_t lineEnd = span.next >= 0 ? span.next : span.textEnd;
    if (selFrom >= 0 && selFrom < std::max(lineEnd, span.start + 1) && selTo > span.start) {
      const int64_t a = std::max(selFrom, span.start) - span.start - column;
      const int64_t b = std::min(selTo, span.textEnd) - span.start - column;
      const int left = kLeftMargin + clampToInt(std::clamp<int64_t>(a, 0, columns) * charWidth_);
      const int right = selTo > span.textEnd ? area.width()
                                             : kLeftMargin + clampToInt(std::clamp<int64_t>(b, 0, columns) * charWidth_);
      if (right > left) {
        const QRect mark(left, y, right - left, lineHeight_);
        p.fillRect(mark, markBack);
        p.save();
        p.setClipRect(mark);
        p.setPen(markInk);
        p.drawText(kLeftMargin, y + ascent_, text);
        p.restore();
      }
    }
    ++shown;
    if (span.next < 0 || span.next >= size) break;
    ++line;
    span = display_.spanAt(line, span.next);
  }
  updateScrollBars();
  if (shown > 0 && !firstScreenShown_) {
    firstScreenShown_ = true;
    emit FirstScreen();
  }
}

void FileDisplayWidget::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  display_.setPageLines(pageLines());
  updateScrollBars();
}

void FileDisplayWidget::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) {
    updateMetrics();
    viewport()->update();
  }
  QAbstractScrollArea::changeEvent(event);
}

void FileDisplayWidget::keyPressEvent(QKeyEvent* event) {
  const int64_t top = display_.topLine();
  const bool ctrl = (event->modifiers() & Qt::ControlModifier) != 0;
  QScrollBar* h = horizontalScrollBar();
  switch (event->key()) {
    case Qt::Key_Up: setTopLine(top - 1); break;
    case Qt::Key_Down: setTopLine(top + 1); break;
    case Qt::Key_PageUp: setTopLine(top - pageLines()); break;
    case Qt::Key_PageDown: setTopLine(top + pageLines()); break;
    case Qt::Key_Home:
      if (ctrl) setTopLine(1); else h->setValue(0);
      break;
    case Qt::Key_End:
      if (ctrl) setTopLine(display_.lineCount() - pageLines() + 1); else h->setValue(h->maximum());
      break;
    case Qt::Key_Left: h->setValue(h->value() - 1); break;
    case Qt::Key_Right: h->setValue(h->value() + 1); break;
    default: QAbstractScrollArea::keyPressEvent(event); return;
  }
  event->accept();
}

void FileDisplayWidget::mousePressEvent(QMouseEvent* event) {
  setFocus();
  if (event->button() != Qt::LeftButton) return;
  const int64_t line = lineAt(event->position().toPoint().y());
  if ((event->modifiers() & Qt::ShiftModifier) != 0 && anchorLine_ > 0) {
    display_.selectLines(anchorLine_, line);
    viewport()->update();
  } else {
    selectLine(line);
  }
}

void FileDisplayWidget::mouseMoveEvent(QMouseEvent* event) {
  emit MouseMove();
  if ((event->buttons() & Qt::LeftButton) != 0 && anchorLine_ > 0) {
    const int y = event->position().toPoint().y();
    // Dragging past an edge scrolls on.
    if (y < 0) setTopLine(display_.topLine() - 1);
    if (y > viewport()->height()) setTopLine(display_.topLine() + 1);
    if (display_.selectLines(anchorLine_, lineAt(std::min(y, viewport()->height() - 1)))) viewport()->update();
  }
}

void FileDisplayWidget::wheelEvent(QWheelEvent* event) {
  const QPoint steps = event->angleDelta() / 40;  // three lines a notch
  if (steps.y() != 0) setTopLine(display_.topLine() - steps.y());
  if (steps.x() != 0) horizontalScrollBar()->setValue(horizontalScrollBar()->value() - steps.x());
  event->accept();
}

}  // namespace zv::forms
