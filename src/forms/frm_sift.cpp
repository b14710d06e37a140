// frmSift: its fields and their places, the resize rule, the pointer, closing, and the
// commands the window does itself (Keep List, Order's refusal, Copy, Help, Font).
#include "forms/frm_sift.h"

#include <algorithm>

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "forms/frm_indexing.h"
#include "forms/frm_keep_file.h"
#include "forms/frm_main.h"
#include "forms/frm_options_fonts.h"
#include "forms/frm_writing.h"
#include "forms/panels.h"
#include "forms/settings_store.h"

namespace zv::forms {

namespace {

constexpr int kRecordLeft = 8;     // pixels, within pnlBackground
constexpr int kHeaderHeight = 64;  // the file and record rows above the text
constexpr int kKeepListWidth = 120;
constexpr int kKeepListGap = 6;

QLabel* caption(const char* name, const char* text, QWidget* parent) {
  auto* label = new QLabel(QLatin1String(text), parent);
  label->setObjectName(QLatin1String(name));
  return label;
}

QLabel* numberPanel(const char* name, QWidget* parent) {
  QLabel* panel = SunkenPanel(name, parent, 22);
  panel->setAlignment(Qt::AlignCenter);
  panel->setMinimumWidth(64);
  return panel;
}

void setBackground(QWidget* w, const QColor& colour) {
  QPalette p = w->palette();
  p.setColor(QPalette::Window, colour);
  w->setPalette(p);
  w->setAutoFillBackground(true);
}

}  // namespace

SiftLayout SiftResize(int innerWidth, int innerHeight, int backgroundTop, int recordLeft, int recordTop) {
  auto orFloor = [](int v) { return v < 0 ? 400 : v; };
  SiftLayout l{};
  l.backgroundHeight = orFloor(innerHeight - backgroundTop);
  l.recordHeight = orFloor(l.backgroundHeight - recordTop - 825);
  l.recordWidth = orFloor(innerWidth - recordLeft - 250);
  return l;
}

FrmSift::FrmSift(FrmMain& frmMain, SettingsStore& store)
    : QMainWindow(&frmMain, Qt::Window), frmMain_(frmMain), store_(store) {
  setObjectName(QStringLiteral("frmSift"));
  setWindowTitle(QStringLiteral("Zorvanta Sifter"));
  setMouseTracking(true);
  // F1 on an element without a context of its own opens the sifter's page.
  setProperty("helpContext", kSiftHelpContext);

  central_ = new QWidget(this);
  central_->setObjectName(QStringLiteral("pnlClient"));
  central_->setMouseTracking(true);
  toolbar_ = buildToolbar();
  pnlBackground_ = buildBackground();
  setCentralWidget(central_);
  buildMenus();

  std::atomic<int16_t>& giInterrupt = frmMain_.job().giInterrupt;
  frmKeepFile_ = new FrmKeepFile(this, giInterrupt);
  frmOptionsFonts_ = new FrmOptionsFonts(this, giInterrupt);
  frmWriting_ = new FrmWriting(this);
  frmIndexing_ = new FrmIndexing(frmMain_, giInterrupt);

  txtRecord_->setFont(ReadFontSetting(store_, kSifterFontsSection));
  setViewMode(kProView, kProViewColor);
  // Every button of the toolbar whole, and room for a few lines of the record.
  setMinimumSize(toolbar_->sizeHint().width(), menuBar()->sizeHint().height() + toolbar_->sizeHint().height() +
                                                   kHeaderHeight + 160 + TwipsToPixels(825));
  resize(minimumSize().expandedTo(QSize(820, 600)));
  qApp->installEventFilter(this);
}

FrmSift::~FrmSift() { qApp->removeEventFilter(this); }

QFrame* FrmSift::buildBackground() {
  auto* background = new QFrame(central_);
  background->setObjectName(QStringLiteral("pnlBackground"));
  background->setFrameStyle(QFrame::Panel | QFrame::Raised);
  background->setMouseTracking(true);

  header_ = new QWidget(background);
  header_->setMouseTracking(true);
  auto* rows = new QGridLayout(header_);
  rows->setContentsMargins(kRecordLeft, 6, kRecordLeft, 4);
  rows->setHorizontalSpacing(6);
  pnlProFileName_ = NamePanel("pnlProFileName", header_);
  rows->addWidget(caption("Label1", "Record file being sifted:", header_), 0, 0);
  rows->addWidget(pnlProFileName_, 0, 1, 1, 8);

  pnlRecToView_ = numberPanel("pnlRecToView", header_);
  pnlTotRecs_ = numberPanel("pnlTotRecs", header_);
  pnlOrder_ = numberPanel("pnlOrder", header_);
  pnlViewMode_ = SunkenPanel("pnlViewMode", header_, 22);
  pnlViewMode_->setAlignment(Qt::AlignCenter);
  pnlViewMode_->setMinimumWidth(96);
  pnlPartialDisplay_ = SunkenPanel("pnlPartialDisplay", header_, 22);
  pnlPartialDisplay_->setText(QStringLiteral("Long Record Partially Displayed"));
  pnlPartialDisplay_->setAlignment(Qt::AlignCenter);
  QPalette warn = pnlPartialDisplay_->palette();
  warn.setColor(QPalette::WindowText, QColor(128, 0, 0));
  pnlPartialDisplay_->setPalette(warn);
  pnlPartialDisplay_->hide();
  rows->addWidget(caption("lblRecNumCap", "Record:", header_), 1, 0, Qt::AlignRight);
  rows->addWidget(pnlRecToView_, 1, 1);
  rows->addWidget(caption("lblRecOfRecs", "of", header_), 1, 2);
  rows->addWidget(pnlTotRecs_, 1, 3);
  rows->addWidget(caption("Label3", "Order:", header_), 1, 4);
  rows->addWidget(pnlOrder_, 1, 5);
  rows->addWidget(pnlPartialDisplay_, 1, 6);
  rows->addWidget(pnlViewMode_, 1, 8);
  rows->setColumnStretch(7, 1);

  txtRecord_ = new QPlainTextEdit(background);
  txtRecord_->setObjectName(QStringLiteral("txtRecord"));
  txtRecord_->setReadOnly(true);
  // Read only, but with a caret and a selection, for Copy and Find Text.
  txtRecord_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  txtRecord_->setLineWrapMode(QPlainTextEdit::NoWrap);
  txtRecord_->setProperty("helpContext", kSiftWindowContext);
  txtRecord_->setMouseTracking(true);
  txtRecord_->viewport()->setMouseTracking(true);

  footer_ = new QWidget(background);
  footer_->setMouseTracking(true);
  auto* foot = new QHBoxLayout(footer_);
  foot->setContentsMargins(kRecordLeft, 4, kRecordLeft, 4);
  foot->setSpacing(6);
  pnlKeptFileName_ = SunkenPanel("pnlKeptFileName", footer_, 22);
  pnlCurrentKeepFile_ = SunkenPanel("pnlCurrentKeepFile", footer_, 22);
  foot->addWidget(caption("Label2", "Kept to:", footer_));
  foot->addWidget(pnlKeptFileName_, 1);
  foot->addSpacing(12);
  foot->addWidget(caption("lblCurKeepFlName", "Current Keep File:", footer_));
  foot->addWidget(pnlCurrentKeepFile_, 1);

  // The keep list stands over the right of the record text while it is asked for.
  pnlKeepList_ = new QFrame(background);
  pnlKeepList_->setObjectName(QStringLiteral("pnlKeepList"));
  pnlKeepList_->setFrameStyle(QFrame::Panel | QFrame::Raised);
  pnlKeepList_->setLineWidth(2);
  setBackground(pnlKeepList_, palette().color(QPalette::Button));
  auto* listRows = new QVBoxLayout(pnlKeepList_);
  listRows->setContentsMargins(3, 3, 3, 3);
  listRows->setSpacing(2);
  auto* listCaption = caption("pnlKeepListCaption", "Keep List", pnlKeepList_);
  listCaption->setAlignment(Qt::AlignCenter);
  setBackground(listCaption, QColor(0, 0, 128));
  QPalette white = listCaption->palette();
  white.setColor(QPalette::WindowText, Qt::white);
  listCaption->setPalette(white);
  lstKeepList_ = new QListWidget(pnlKeepList_);
  lstKeepList_->setObjectName(QStringLiteral("lstKeepList"));
  lstKeepList_->setSelectionMode(QAbstractItemView::NoSelection);
  listRows->addWidget(listCaption);
  listRows->addWidget(lstKeepList_, 1);
  pnlKeepList_->hide();
  return background;
}

void FrmSift::placeChildren() {
  // Twips, as the rule was written; one pixel is 15.
  const QSize inner = central_->size();
  toolbar_->setGeometry(0, 0, inner.width(), toolbar_->sizeHint().height());
  const int backgroundTop = toolbar_->height();
  const SiftLayout l = SiftResize(PixelsToTwips(inner.width()), PixelsToTwips(inner.height()),
                                  PixelsToTwips(backgroundTop), PixelsToTwips(kRecordLeft),
                                  PixelsToTwips(kHeaderHeight));
  pnlBackground_->setGeometry(0, backgroundTop, inner.width(), TwipsToPixels(l.backgroundHeight));
  const QRect area(kRecordLeft, kHeaderHeight, TwipsToPixels(l.recordWidth), TwipsToPixels(l.recordHeight));
  // The keep list takes the right of the record's area and the text the rest, so
  // that no line of the record goes under the list.
  QRect text = area;
  if (!pnlKeepList_->isHidden()) {
    text.setWidth(std::max(area.width() - kKeepListWidth - kKeepListGap, kKeepListWidth));
    const int listHeight = std::min(area.height(), 360);
    pnlKeepList_->setGeometry(text.right() + 1 + kKeepListGap, area.top(), kKeepListWidth, listHeight);
  }
  txtRecord_->setGeometry(text);
  // The rows above and below line up with the area's edges.
  const int rowWidth = area.width() + 2 * kRecordLeft;
  header_->setGeometry(0, 0, rowWidth, kHeaderHeight);
  footer_->setGeometry(0, area.bottom() + 6, rowWidth, footer_->sizeHint().height());
}

void FrmSift::paintEvent(QPaintEvent* event) {
  // Each repaint gives the normal pointer back.
  while (QApplication::overrideCursor() != nullptr) QApplication::restoreOverrideCursor();
  QMainWindow::paintEvent(event);
}

void FrmSift::closeEvent(QCloseEvent* event) {
  // The close box leaves the sifter as Exit Sifter does; the window is only hidden,
  // so its font stays for the next session.
  event->ignore();
  doAction(SiftAction::Exit);
}

}  // namespace zv::forms
