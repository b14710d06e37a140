// frmSift's menu tree, its toolbar with the pictures' two states, and its window keys.
#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QPlainTextEdit>
#include <QToolButton>

#include "forms/frm_sift.h"
#include "forms/picture_toolbar.h"
#include "forms/sift_pictures.h"

namespace zv::forms {

void FrmSift::buildMenus() {
  BuildMenuTree(
      menuBar(), SiftMenuRows(),
      [](const SiftMenuRow& row, QMenu* menu) { menu->setProperty("helpContext", row.helpContext); },
      [this](const SiftMenuRow& row, QAction* action) {
        if (row.shortcut != nullptr) action->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
        const SiftAction what = row.action;
        connect(action, &QAction::triggered, this, [this, what] { doAction(what); });
        if (what == SiftAction::KeepList) {
          action->setCheckable(true);
          mnuKeepList_ = action;
        }
      });
}

QWidget* FrmSift::buildToolbar() {
  return BuildPictureToolbar(central_, SiftButtons(), &SiftPicture, kSiftPictureSize, false,
                             [this](int i, const SiftButton& b, QToolButton* button) {
                               const SiftAction what = b.action;
                               connect(button, &QToolButton::clicked, this, [this, what] { doAction(what); });
                               cmdTB_[static_cast<std::size_t>(i)] = button;
                             });
}

void FrmSift::buttonHover(QToolButton* button, bool entering) {
  HoverPictureButton(button, &SiftPicture, entering, false);
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
