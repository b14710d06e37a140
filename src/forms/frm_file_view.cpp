// frmFileView: its fields and their places, the resize rule, Open, the display's events,
// and leaving the viewer.
#include "forms/frm_file_view.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFile>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QMenuBar>

#include "core/error.h"
#include "core/files.h"
#include "forms/file_dialogs.h"
#include "forms/file_display_widget.h"
#include "forms/frm_big_load.h"
#include "forms/frm_main.h"
#include "forms/frm_options_fonts.h"
#include "forms/messages.h"
#include "forms/panels.h"
#include "forms/settings_store.h"

namespace zv::forms {

namespace {

constexpr std::string_view kOpenFilter =
    "All Files|*.*|.LOG Files|*.log|.CAP Files|*.cap|.REF Files|*.ref|.PRO Files|*.pro|.FSC Files|*.fsc|"
    ".KEP Files|*.kep|.ORD Files|*.ord|.QRY Files|*.qry|.RNK Files|*.rnk|.TBL Files|*.tbl|.SRT Files|*.srt|"
    ".FMT Files|*.fmt|.BRK Files|*.brk|.DIC Files|*.dic";

constexpr int kDisplayLeft = 8;     // pixels, within pnlBackGround
constexpr int kHeaderHeight = 36;   // the file and line row above the display
// The display's own margins, in twips: below it to the panel's foot, and right of it.
constexpr int kDisplayBottomMargin = 180;
constexpr int kDisplayRightMargin = 180;

QString numberCaption(int64_t n) { return QStringLiteral(" %1 ").arg(n); }

}  // namespace

FileViewLayout FileViewResize(int innerWidth, int innerHeight, int backgroundTop, int displayLeft, int displayTop) {
  auto orFloor = [](int v) { return v < 0 ? 400 : v; };
  FileViewLayout l{};
  l.backgroundHeight = orFloor(innerHeight - backgroundTop);
  l.displayHeight = orFloor(l.backgroundHeight - displayTop - kDisplayBottomMargin);
  l.displayWidth = orFloor(innerWidth - displayLeft - kDisplayRightMargin);
  return l;
}

FrmFileView& FrmFileView::Of(FrmMain& frmMain) {
  if (auto* existing = frmMain.findChild<FrmFileView*>(QStringLiteral("frmFileView"), Qt::FindDirectChildrenOnly))
    return *existing;
  return *new FrmFileView(frmMain, frmMain.store());
}

FrmFileView::FrmFileView(FrmMain& frmMain, SettingsStore& store)
    : QMainWindow(&frmMain, Qt::Window), frmMain_(frmMain), store_(store) {
  setObjectName(QStringLiteral("frmFileView"));
  setWindowTitle(QStringLiteral("Zorvanta File Viewer"));
  setMouseTracking(true);
  setProperty("helpContext", kViewerHelpContext);

  central_ = new QWidget(this);
  central_->setObjectName(QStringLiteral("pnlClient"));
  central_->setMouseTracking(true);
  toolbar_ = buildToolbar();
  pnlBackGround_ = buildBackground();
  setCentralWidget(central_);
  buildMenus();

  frmBigLoad_ = new FrmBigLoad(frmMain_);
  frmSplit_ = new FrmSplit(frmMain_, *this);
  frmOptionsFonts_ = new FrmOptionsFonts(this, frmMain_.job().giInterrupt);

  display_->setFont(ReadFontSetting(store_, kViewerFontsSection));
  connect(display_, &FileDisplayWidget::LoadComplete, this, &FrmFileView::onLoadComplete);
  connect(display_, &FileDisplayWidget::SearchRequest, this, [this] { fileview::OnSearchRequest(display_->display()); });
  connect(display_, &FileDisplayWidget::SearchComplete, this, &FrmFileView::onSearchComplete);
  connect(display_, &FileDisplayWidget::TopIndexChange, this, &FrmFileView::onTopIndexChange);
  connect(display_, &FileDisplayWidget::FirstScreen, this, &FrmFileView::hideBigLoad);
  connect(display_, &FileDisplayWidget::MouseMove, this, [this] { display_->setFocus(); });
  central_->installEventFilter(this);
  // Every button of the toolbar whole, and room for a few lines of the file.
  setMinimumSize(toolbar_->sizeHint().width(),
                 menuBar()->sizeHint().height() + toolbar_->sizeHint().height() + kHeaderHeight + 120);
  resize(minimumSize().expandedTo(QSize(860, 600)));
}

FrmFileView::~FrmFileView() = default;

QFrame* FrmFileView::buildBackground() {
  auto* background = new QFrame(central_);
  background->setObjectName(QStringLiteral("pnlBackGround"));
  background->setFrameStyle(QFrame::Panel | QFrame::Raised);
  background->setMouseTracking(true);

  header_ = new QWidget(background);
  header_->setMouseTracking(true);
  auto* row = new QGridLayout(header_);
  row->setContentsMargins(kDisplayLeft, 6, kDisplayLeft, 4);
  row->setHorizontalSpacing(6);
  pnlFileName_ = NamePanel("pnlFileName", header_);
  pnlViewLine_ = SunkenPanel("pnlViewLine", header_, 22);
  pnlLinesInFile_ = SunkenPanel("pnlLinesInFile", header_, 22);
  for (QLabel* number : {pnlViewLine_, pnlLinesInFile_}) {
    number->setAlignment(Qt::AlignCenter);
    number->setMinimumWidth(84);
  }
  lblLineOf_ = new QLabel(QStringLiteral("of"), header_);
  lblLineOf_->setObjectName(QStringLiteral("lblLineOf"));
  row->addWidget(new QLabel(QStringLiteral("File:"), header_), 0, 0);
  row->addWidget(pnlFileName_, 0, 1);
  row->addWidget(new QLabel(QStringLiteral("Line:"), header_), 0, 2);
  row->addWidget(pnlViewLine_, 0, 3);
  row->addWidget(lblLineOf_, 0, 4);
  row->addWidget(pnlLinesInFile_, 0, 5);
  row->setColumnStretch(1, 1);

  display_ = new FileDisplayWidget(background);
  display_->setObjectName(QStringLiteral("MhFileDisplay1"));
  display_->setProperty("helpContext", kViewerHelpContext);
  return background;
}

void FrmFileView::placeChildren() {
  const QSize inner = central_->size();
  toolbar_->setGeometry(0, 0, inner.width(), toolbar_->sizeHint().height());
  const int backgroundTop = toolbar_->height();
  const FileViewLayout l = FileViewResize(PixelsToTwips(inner.width()), PixelsToTwips(inner.height()),
                                          PixelsToTwips(backgroundTop), PixelsToTwips(kDisplayLeft),
                                          PixelsToTwips(kHeaderHeight));
  pnlBackGround_->setGeometry(0, backgroundTop, inner.width(), TwipsToPixels(l.backgroundHeight));
  display_->setGeometry(kDisplayLeft, kHeaderHeight, TwipsToPixels(l.displayWidth), TwipsToPixels(l.displayHeight));
  header_->setGeometry(0, 0, display_->width() + 2 * kDisplayLeft, kHeaderHeight);
}

QLabel* FrmFileView::panel(const char* name) const { return findChild<QLabel*>(QLatin1String(name)); }

QString FrmFileView::chooseFile(bool save, std::string_view dialogFilter) {
  QWidget* parent = isVisible() ? static_cast<QWidget*>(this) : &frmMain_;
  const QString path = save ? GetSaveFileName(parent, dialogFilter) : GetOpenFileName(parent, dialogFilter);
  // The system's dialog leaves the current directory at the chosen file's folder.
  if (!path.isEmpty() && QFileInfo(path).dir().exists()) QDir::setCurrent(QFileInfo(path).absolutePath());
  return path;
}

void FrmFileView::clearDisplay() {
  display_->setFileName(QString());
  display_->setFileName(QString());
}

void FrmFileView::Open(const Command& command) {
  clearDisplay();
  JobState& job = frmMain_.job();
  job.gsInFile.clear();
  pnlFileName_->clear();
  pnlViewLine_->clear();
  pnlLinesInFile_->clear();
  for (;;) {
    frmMain_.EnableMain(false);
    const QString path = chooseFile(false, kOpenFilter);
    if (path.isEmpty()) {
      // The dialog's cancel: back to the main window, enabled.
      hide();
      frmMain_.show();
      frmMain_.EnableMain(true);
      frmMain_.activateWindow();
      return;
    }
    const std::string name = QFile::encodeName(path).toStdString();
    const JobResult checked = frmMain_.runJob(command.number, fileview::ViewFileParams{name}, NoProgress());
    if (checked.outcome == JobOutcome::Refused && checked.message) {
      ShowMessage(isVisible() ? static_cast<QWidget*>(this) : &frmMain_, MsgIcon::Warning, checked.message->title,
                  checked.message->text);
      continue;
    }
    if (!checked.done()) {
      // frmError has said why; the main window takes over again.
      hide();
      frmMain_.show();
      frmMain_.EnableMain(true);
      return;
    }
    pnlFileName_->setText(path);
    show();
    raise();
    activateWindow();
    const bool big = FileSize(name) > FrmBigLoad::kBigFileBytes;
    if (big) {
      frmBigLoad_->show();
      frmBigLoad_->raise();
      frmBigLoad_->repaint();
    }
    try {
      display_->setFileName(path);
    } catch (const ZvError& e) {
      job.gsErrNumber = ErrNumberText(e.number());
      job.gsErrText = e.text();
      frmBigLoad_->hide();
      hide();
      frmMain_.show();
      frmMain_.EnableMain(true);
      frmMain_.activateWindow();
      frmMain_.showErrorForm(DisplayText(Q(ErrorFormText(job.gsErrNumber, job.gsErrText))));
      return;
    }
    job.gsInFile = name;
    pnlViewLine_->setText(numberCaption(display_->display().topLine()));
    frmMain_.hide();
    display_->setFocus();
    return;
  }
}

void FrmFileView::hideBigLoad() {
  if (frmBigLoad_->isVisible()) frmBigLoad_->hide();
}

void FrmFileView::onLoadComplete() {
  pnlLinesInFile_->setText(numberCaption(display_->display().lineCount()));
  hideBigLoad();
  if (pendingTop_ > 1) display_->setTopLine(pendingTop_);
  pendingTop_ = 0;
}

void FrmFileView::onTopIndexChange() { pnlViewLine_->setText(numberCaption(display_->display().topLine())); }

void FrmFileView::onSearchComplete() {
  if (const std::optional<Message> said = fileview::OnSearchComplete(display_->display())) message(*said);
  display_->viewport()->repaint();
  display_->setFocus();
}

void FrmFileView::releaseFile() {
  reopenName_ = display_->display().fileName();
  reopenTop_ = display_->display().topLine();
  display_->setFileName(QString());
}

void FrmFileView::restoreFile() {
  if (reopenName_.empty()) return;
  const QString name = QFile::decodeName(QByteArray::fromStdString(reopenName_));
  reopenName_.clear();
  try {
    display_->setFileName(name);
  } catch (const ZvError& e) {
    frmMain_.job().gsErrNumber = ErrNumberText(e.number());
    frmMain_.job().gsErrText = e.text();
    frmMain_.showErrorForm(DisplayText(Q(ErrorFormText(frmMain_.job().gsErrNumber, frmMain_.job().gsErrText))));
    return;
  }
  // The index is being built again: the old top line comes back with LoadComplete.
  pendingTop_ = reopenTop_;
  onTopIndexChange();
}

void FrmFileView::exitCommand() {
  clearDisplay();
  frmBigLoad_->hide();
  frmMain_.show();
  frmMain_.EnableMain(true);
  hide();
  frmMain_.activateWindow();
}

void FrmFileView::closeEvent(QCloseEvent* event) {
  // The close box leaves the viewer as Exit Viewer does; the window stays for the next use.
  event->ignore();
  exitCommand();
}

}  // namespace zv::forms
