// frmMain: its layout, the left bar, the status line, the clock, the keys and the locks.
#include "forms/frm_main.h"

#include <algorithm>

#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QGridLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QStatusBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "core/input_file.h"
#include "core/time_text.h"
#include "forms/frm_error.h"
#include "forms/frm_filter.h"
#include "forms/frm_renumber.h"
#include "forms/frm_settings.h"
#include "forms/frm_sift.h"
#include "forms/help_window.h"
#include "forms/messages.h"
#include "forms/panels.h"
#include "forms/types_dialog.h"
#include "forms/version_record.h"

namespace zv::forms {

namespace {

constexpr const char* kPanelCaptions[3] = {"Toolbars", "Dialog Filtering Options", "Processing Time"};

}  // namespace

FrmMain::FrmMain(SettingsStore& store, QWidget* parent) : QMainWindow(parent), store_(store) {
  setObjectName(QStringLiteral("frmMain"));
  setWindowTitle(QLatin1String(kMainTitle));

  auto* central = new QWidget(this);
  central->setObjectName(QStringLiteral("pnlBackground"));
  central->setMouseTracking(true);
  central->installEventFilter(this);
  auto* rows = new QVBoxLayout(central);
  rows->setContentsMargins(4, 4, 4, 4);
  rows->setSpacing(4);
  rows->addWidget(buildToolbarStrip());
  auto* columns = new QHBoxLayout;
  columns->setSpacing(4);
  columns->addWidget(buildLeftBar());
  columns->addWidget(buildPane(), 1);
  rows->addLayout(columns, 1);
  setCentralWidget(central);

  buildMenus();
  buildStatusBar();

  frmFilter_ = new FrmFilter(*this, job_);
  frmSettings_ = new FrmSettings(*this, store_);
  frmError_ = new FrmError(*this);
  frmSift_ = new FrmSift(*this, store_);

  chooseToolbar(0);
  openPanel(0);
  setMinimumSize(LeastUsableSize());
  // The window's own size, where a start that restores only the maximized state
  // leaves it to come back to.
  resize(minimumSize());
  timer1_.setObjectName(QStringLiteral("Timer1"));
  connect(&timer1_, &QTimer::timeout, this, &FrmMain::tick);
  timer1_.start(1000);
  tick();
  qApp->installEventFilter(this);
  // The program ends with this window's shutdown and at no other time. Qt would end
  // it, closing every window on the way, when the last window it counts goes: with
  // this window hidden behind the sifter, that is any dialog without a parent.
  QApplication::setQuitOnLastWindowClosed(false);
}

FrmMain::~FrmMain() { qApp->removeEventFilter(this); }

QWidget* FrmMain::buildLeftBar() {
  auto* bar = new QFrame(this);
  bar->setObjectName(QStringLiteral("pnlOLBar"));
  bar->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  auto* layout = new QVBoxLayout(bar);
  layout->setContentsMargins(2, 2, 2, 2);
  layout->setSpacing(2);
  for (int i = 0; i < 3; ++i) {
    auto* caption = new QPushButton(QLatin1String(kPanelCaptions[i]), bar);
    caption->setObjectName(QStringLiteral("pnlOLCap_%1").arg(i));
    caption->setFocusPolicy(Qt::NoFocus);
    connect(caption, &QPushButton::clicked, this, [this, i] { openPanel(i); });
    auto* panel = new QFrame(bar);
    panel->setObjectName(QStringLiteral("pnlOL_%1").arg(i));
    panel->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Ignored);
    pnlOL_[i] = panel;
    layout->addWidget(caption);
    layout->addWidget(panel, 1);
  }

  // "Toolbars": the four ribTB buttons.
  auto* ribs = new QVBoxLayout(pnlOL_[0]);
  auto* group = new QButtonGroup(this);
  for (int i = 0; i < 4; ++i) {
    auto* rib = new QToolButton(pnlOL_[0]);
    rib->setObjectName(QStringLiteral("ribTB_%1").arg(i));
    rib->setText(QLatin1String(Toolbars()[i].ribCaption));
    rib->setCheckable(true);
    rib->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    rib->setMinimumHeight(34);
    group->addButton(rib, i);
    ribs->addWidget(rib);
    connect(rib, &QToolButton::clicked, this, [this, i] { chooseToolbar(i); });
  }
  ribs->addStretch();

  // "Dialog Filtering Options": optDial.
  auto* options = new QVBoxLayout(pnlOL_[1]);
  for (int i = 0; i < 5; ++i) {
    optDial_[i] = new QRadioButton(QLatin1String(DialogOptions()[i].caption), pnlOL_[1]);
    optDial_[i]->setObjectName(QStringLiteral("optDial_%1").arg(i));
    options->addWidget(optDial_[i]);
  }
  optDial_[0]->setChecked(true);
  options->addStretch();

  // "Processing Time".
  auto* times = new QGridLayout(pnlOL_[2]);
  pnlStartTime_ = SunkenPanel("pnlStartTime", pnlOL_[2]);
  pnlFinishTime_ = SunkenPanel("pnlFinishTime", pnlOL_[2]);
  pnlElapsed_ = SunkenPanel("pnlElapsed", pnlOL_[2]);
  pnlFileSize_ = SunkenPanel("pnlFileSize", pnlOL_[2]);
  pnlFileLines_ = SunkenPanel("pnlFileLines", pnlOL_[2]);
  const std::array<std::pair<const char*, QLabel*>, 5> rows{{{"Started:", pnlStartTime_},
                                                             {"Finished:", pnlFinishTime_},
                                                             {"Elapsed:", pnlElapsed_},
                                                             {"File Size:", pnlFileSize_},
                                                             {"File Lines:", pnlFileLines_}}};
  for (int r = 0; r < 5; ++r) {
    times->addWidget(new QLabel(QLatin1String(rows[r].first), pnlOL_[2]), r, 0);
    times->addWidget(rows[r].second, r, 1);
  }
  times->setColumnStretch(1, 1);
  times->setRowStretch(5, 1);
  // As wide as the widest caption of its three panels asks ("Selected TYPES to
  // separate files" above all), in whatever font the desktop uses.
  bar->setFixedWidth(std::max(210, bar->sizeHint().width()));
  return bar;
}

QWidget* FrmMain::buildPane() {
  auto* pane = new QFrame(this);
  pane->setObjectName(QStringLiteral("pnlPane"));
  pane->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  pane->setMouseTracking(true);
  pane->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
  pane->installEventFilter(this);
  auto* layout = new QVBoxLayout(pane);
  auto* title = new QLabel(QLatin1String(AppVersion().title), pane);
  title->setObjectName(QStringLiteral("lblPaneTitle"));
  QFont big = title->font();
  big.setPointSize(big.pointSize() * 3);
  big.setBold(true);
  title->setFont(big);
  title->setAlignment(Qt::AlignCenter);
  auto* line = new QLabel(QLatin1String(AppVersion().fileDescription), pane);
  line->setAlignment(Qt::AlignCenter);
  line->setWordWrap(true);
  layout->addStretch();
  layout->addWidget(title);
  layout->addWidget(line);
  layout->addStretch();
  return pane;
}

void FrmMain::buildStatusBar() {
  QStatusBar* bar = statusBar();
  bar->setSizeGripEnabled(true);
  pnlStatusMsg_ = SunkenPanel("pnlStatusMsg", bar);
  bar->addWidget(pnlStatusMsg_, 1);
  for (int i = 0; i < 4; ++i) {
    pnlKeyStatus_[i] = SunkenPanel("", bar);
    pnlKeyStatus_[i]->setObjectName(QStringLiteral("pnlKeyStatus_%1").arg(i));
    pnlKeyStatus_[i]->setAlignment(Qt::AlignCenter);
    pnlKeyStatus_[i]->setFixedWidth(46);
    bar->addPermanentWidget(pnlKeyStatus_[i]);
  }
  pnlTime_ = SunkenPanel("pnlTime", bar);
  pnlTime_->setAlignment(Qt::AlignCenter);
  pnlTime_->setFixedWidth(76);
  bar->addPermanentWidget(pnlTime_);
}

QSize FrmMain::LeastUsableSize() const {
  // Width: the widest toolbar whole, the left bar beside the pane's title, and the
  // longest status hint beside the lock and time panels.
  const auto* strip = findChild<QFrame*>(QStringLiteral("pnlTB_Background"));
  const QMargins stripMargins = strip->contentsMargins() + strip->layout()->contentsMargins();
  int toolbarWidth = 0;
  for (const QWidget* panel : pnlTB_)
    toolbarWidth = std::max(toolbarWidth, static_cast<const QScrollArea*>(panel)->widget()->sizeHint().width());
  toolbarWidth += stripMargins.left() + stripMargins.right();

  const QWidget* leftBar = findChild<QWidget*>(QStringLiteral("pnlOLBar"));
  const auto* title = findChild<QLabel*>(QStringLiteral("lblPaneTitle"));
  const int columnsWidth = leftBar->width() + 4 + title->sizeHint().width() + 16;

  const QFontMetrics metrics(pnlStatusMsg_->font());
  int longestHint = 0;
  for (const Toolbar& bar : Toolbars())
    for (const ToolbarButton& b : bar.buttons)
      longestHint = std::max(longestHint, metrics.horizontalAdvance(QLatin1String(b.hint)));
  int statusWidth = longestHint + 2 * pnlStatusMsg_->frameWidth() + 8;
  for (const QLabel* p : pnlKeyStatus_) statusWidth += p->width() + 6;
  statusWidth += pnlTime_->width() + 6 + 24;  // and the size grip

  const QMargins central = centralWidget()->layout()->contentsMargins();
  const int width = std::max({toolbarWidth, columnsWidth, statusWidth}) + central.left() + central.right();

  // Height: the menu, the toolbar strip, the left bar with its tallest panel open,
  // the status line.
  const auto* bar = static_cast<const QBoxLayout*>(leftBar->layout());
  int captions = 0;
  for (int i = 0; i < 3; ++i)
    captions += findChild<QWidget*>(QStringLiteral("pnlOLCap_%1").arg(i))->sizeHint().height() + 2 * bar->spacing();
  int tallestPanel = 0;
  for (const QWidget* panel : pnlOL_) tallestPanel = std::max(tallestPanel, panel->layout()->sizeHint().height());
  const int leftBarHeight = captions + tallestPanel + 2 * leftBar->contentsMargins().top() + 8;
  const int height = menuBar()->sizeHint().height() + central.top() + central.bottom() + strip->sizeHint().height() +
                     4 + leftBarHeight + statusBar()->sizeHint().height();
  return {width, height};
}

void FrmMain::FormLoad(QWidget* frmStartup) {
  for (int i = 0; i < 4; ++i) KeyStat1_Change(i);
  if (frmStartup != nullptr) frmStartup->hide();
  show();
  EnableMain(true);
  QApplication::restoreOverrideCursor();
}

void FrmMain::EnableMain(bool enabled) {
  mainEnabled_ = enabled;
  centralWidget()->setEnabled(enabled);
  menuBar()->setEnabled(enabled);
}

void FrmMain::setStatusMsg(const QString& text) { pnlStatusMsg_->setText(text); }
QString FrmMain::statusMsg() const { return pnlStatusMsg_->text(); }

void FrmMain::ClearStatusPanels() {
  for (QLabel* p : {pnlStartTime_, pnlFinishTime_, pnlElapsed_, pnlFileSize_, pnlFileLines_}) p->clear();
}

void FrmMain::showJobStart(const QString& fileSize, const QString& startTime, const QString& fileLines) {
  pnlFileSize_->setText(fileSize);
  pnlStartTime_->setText(startTime);
  pnlFileLines_->setText(fileLines);
}

void FrmMain::showJobFinish(const QString& finishTime, const QString& elapsed) {
  pnlFinishTime_->setText(finishTime);
  pnlElapsed_->setText(elapsed);
}

void FrmMain::ResetDialogs() {
  frmFilter_->ResetFilterForm();
  ResetTypesDialogs(*this);
  if (auto* frmRenumber = findChild<FrmRenumber*>(QStringLiteral("frmRenumber"), Qt::FindDirectChildrenOnly))
    frmRenumber->ResetRenumberForm();
}

void FrmMain::chooseToolbar(int index) {
  for (int i = 0; i < 4; ++i)
    if (i != index) pnlTB_[i]->hide();
  pnlTB_[index]->show();
  if (auto* rib = findChild<QToolButton*>(QStringLiteral("ribTB_%1").arg(index))) rib->setChecked(true);
}

void FrmMain::openPanel(int index) {
  // Captions up to the open one stay at the top, the rest go to the bottom: the open
  // panel alone takes the bar's free height between them.
  openPanel_ = index;
  for (int i = 0; i < 3; ++i) pnlOL_[i]->setVisible(i == index);
}

void FrmMain::KeyStat1_Change(int index) {
  pnlKeyStatus_[index]->setText(QString::fromStdString(keyLocks_.panelText(static_cast<LockKey>(index))));
}

void FrmMain::tick() {
  pnlTime_->setText(QString::fromStdString(TimeOfDayText()));
  if (keyLocks_.poll())
    for (int i = 0; i < 3; ++i) KeyStat1_Change(i);
}

void FrmMain::changeEvent(QEvent* event) {
  // Coming back to the main window closes what an ended job left and clears the
  // dialogs' counters; never while a job or a dialog holds the window disabled.
  if (event->type() == QEvent::ActivationChange && isActiveWindow() && mainEnabled_ && !jobRunning_)
    ResetDialogs();
  QMainWindow::changeEvent(event);
}

void FrmMain::fileMenuPosition(int position) {
  const auto* file = menuBar()->findChild<QMenu*>(QStringLiteral("mnuFile"));
  const QList<QAction*> actions = file->actions();
  if (position < 1 || position > actions.size()) return;
  QAction* action = actions[position - 1];
  if (!action->isSeparator()) action->trigger();
}

bool FrmMain::handleKey(QObject* watched, QKeyEvent* key) {
  auto* widget = qobject_cast<QWidget*>(watched);
  if (widget == nullptr) return false;
  static constexpr std::pair<int, LockKey> kLocks[] = {{Qt::Key_CapsLock, LockKey::Caps},
                                                      {Qt::Key_NumLock, LockKey::Num},
                                                      {Qt::Key_ScrollLock, LockKey::Scroll},
                                                      {Qt::Key_Insert, LockKey::Insert}};
  for (const auto& [qtKey, lock] : kLocks) {
    if (key->key() == qtKey && !key->isAutoRepeat()) {
      keyLocks_.keyPressed(lock);
      keyLocks_.poll();
      KeyStat1_Change(static_cast<int>(lock));
      return true;
    }
  }
  const Qt::KeyboardModifiers mods = key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier);
  if (key->key() == Qt::Key_F1 && mods == Qt::NoModifier && widget->window() != ExistingHelpWindow()) {
    // The page of the focused element's help context, else the contents.
    ShowHelp(this, HelpPageForContext(HelpContextOf(widget)));
    return true;
  }
  if (widget->window() != this || !mainEnabled_) return false;
  // The key rows of the main window: each names a position of the File menu, and the
  // third position is the separator, so Ctrl+F1 and F9 do nothing.
  static constexpr struct {
    int key;
    Qt::KeyboardModifiers mods;
    int position;
  } kRows[] = {{Qt::Key_F4, Qt::AltModifier, 4},
               {Qt::Key_F1, Qt::ControlModifier, 3},
               {Qt::Key_F7, Qt::NoModifier, 4},
               {Qt::Key_F9, Qt::NoModifier, 3}};
  for (const auto& row : kRows) {
    if (key->key() == row.key && mods == row.mods) {
      fileMenuPosition(row.position);
      return true;
    }
  }
  return false;
}

bool FrmMain::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && handleKey(watched, static_cast<QKeyEvent*>(event))) return true;
  // A move over the bare form, not over a button, empties the status line.
  if (event->type() == QEvent::MouseMove &&
      (watched == centralWidget() || watched->objectName() == QLatin1String("pnlPane"))) {
    // Moves over a button reach here too, passed up by the button.
    const auto* area = static_cast<QWidget*>(watched);
    const QWidget* under = area->childAt(static_cast<QMouseEvent*>(event)->position().toPoint());
    bool overButton = false;
    for (const QWidget* w = under; w != nullptr && w != area; w = w->parentWidget())
      overButton = overButton || qobject_cast<const QAbstractButton*>(w) != nullptr;
    if (!overButton) setStatusMsg(QString());
  }
  return QMainWindow::eventFilter(watched, event);
}

}  // namespace zv::forms
