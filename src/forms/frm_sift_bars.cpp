// frmSift's menu tree, its toolbar with the pictures' two states, and its window keys.
#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QToolButton>

#include "forms/frm_sift.h"
#include "forms/sift_pictures.h"

namespace zv::forms {

namespace {

// QBColor 3 and 5: a button's caption at rest and under the pointer.
const QColor kCaptionAtRest(0, 128, 128);
const QColor kCaptionHovered(128, 0, 128);

void setCaptionColour(QWidget* w, const QColor& colour) {
  // Not the disabled group: a disabled button keeps its greyed caption.
  QPalette p = w->palette();
  p.setColor(QPalette::Active, QPalette::ButtonText, colour);
  p.setColor(QPalette::Inactive, QPalette::ButtonText, colour);
  w->setPalette(p);
}

}  // namespace

void FrmSift::buildMenus() {
  QMenu* open = nullptr;
  for (const SiftMenuRow& row : SiftMenuRows()) {
    const QString name = QLatin1String(row.name);
    if (row.level == 0) {
      open = menuBar()->addMenu(QLatin1String(row.caption));
      open->setObjectName(name);
      open->menuAction()->setObjectName(name);
      open->setProperty("helpContext", row.helpContext);
      continue;
    }
    QAction* action =
        row.action == SiftAction::Separator ? open->addSeparator() : open->addAction(QLatin1String(row.caption));
    action->setObjectName(name);
    if (row.action == SiftAction::Separator) continue;
    if (row.shortcut != nullptr) action->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
    const SiftAction what = row.action;
    connect(action, &QAction::triggered, this, [this, what] { doAction(what); });
    if (what == SiftAction::KeepList) {
      action->setCheckable(true);
      mnuKeepList_ = action;
    }
  }
}

QWidget* FrmSift::buildToolbar() {
  auto* strip = new QFrame(central_);
  strip->setObjectName(QStringLiteral("pnlToolbar"));
  strip->setFrameStyle(QFrame::Panel | QFrame::Raised);
  auto* row = new QHBoxLayout(strip);
  row->setContentsMargins(3, 3, 3, 3);
  row->setSpacing(1);
  int i = 0;
  for (const SiftButton& b : SiftButtons()) {
    auto* button = new QToolButton(strip);
    button->setObjectName(QStringLiteral("cmdTB_%1").arg(i));
    button->setText(QLatin1String(b.caption));
    button->setToolTip(QLatin1String(b.hint));
    button->setIcon(QIcon(SiftPicture(i, false)));
    button->setIconSize(QSize(kSiftPictureSize, kSiftPictureSize));
    button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setMinimumWidth(54);
    button->setProperty("pictureIndex", i);
    QFont f = button->font();
    f.setBold(true);
    button->setFont(f);
    setCaptionColour(button, kCaptionAtRest);
    const SiftAction what = b.action;
    connect(button, &QToolButton::clicked, this, [this, what] { doAction(what); });
    row->addWidget(button);
    cmdTB_[static_cast<std::size_t>(i++)] = button;
  }
  row->addStretch();
  return strip;
}

void FrmSift::buttonHover(QToolButton* button, bool entering) {
  const int index = button->property("pictureIndex").toInt();
  button->setIcon(QIcon(SiftPicture(index, entering)));
  setCaptionColour(button, entering ? kCaptionHovered : kCaptionAtRest);
  if (entering) txtRecord_->setFocus();
}

bool FrmSift::handleKey(QWidget* target, QKeyEvent* key) {
  if (target == nullptr || target->window() != this || !isVisible()) return false;
  const std::optional<SiftAction> action = SiftKeyAction(*key);
  if (!action) return false;
  doAction(*action);
  return true;
}

bool FrmSift::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::ShortcutOverride: {
      // A window key wins over the element's own use of it and over a menu's
      // shortcut: Ctrl+O writes the order, as its menu caption says, rather than
      // opening another file over the session.
      auto* target = qobject_cast<QWidget*>(watched);
      if (target == nullptr || target->window() != this) break;
      auto* key = static_cast<QKeyEvent*>(event);
      if (SiftKeyAction(*key)) {
        event->accept();
        return true;
      }
      // Ctrl+C is Edit's Copy, with its message when nothing is selected, not the
      // record text's own copy.
      if (key->matches(QKeySequence::Copy)) {
        event->ignore();
        return true;
      }
      break;
    }
    case QEvent::KeyPress:
      if (handleKey(qobject_cast<QWidget*>(watched), static_cast<QKeyEvent*>(event))) return true;
      break;
    case QEvent::Enter:
    case QEvent::Leave:
      if (auto* button = qobject_cast<QToolButton*>(watched); button != nullptr && button->parentWidget() == toolbar_)
        buttonHover(button, event->type() == QEvent::Enter);
      break;
    case QEvent::MouseMove:
      // Over the window or the record text, the text takes the focus and context 120.
      if (watched == central_ || watched == pnlBackground_ || watched == txtRecord_->viewport()) {
        txtRecord_->setFocus();
        txtRecord_->setProperty("helpContext", kSiftWindowContext);
      }
      break;
    case QEvent::Resize:
      if (watched == central_) placeChildren();
      break;
    default:
      break;
  }
  return QMainWindow::eventFilter(watched, event);
}

}  // namespace zv::forms
