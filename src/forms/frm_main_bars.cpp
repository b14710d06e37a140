// frmMain's menu tree and toolbars, made from the tables of main_tables.cpp.
#include "forms/frm_main.h"

#include <vector>

#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>
#include <QToolButton>

namespace zv::forms {

namespace {

// QBColor 3 and 5: a toolbar button's text at rest and under the mouse.
const QColor kTextAtRest(0, 128, 128);
const QColor kTextHovered(128, 0, 128);

void setTextColour(QWidget* w, const QColor& colour) {
  // Not the disabled group: a button of a disabled window keeps the greyed text that
  // says so.
  QPalette p = w->palette();
  p.setColor(QPalette::Active, QPalette::ButtonText, colour);
  p.setColor(QPalette::Inactive, QPalette::ButtonText, colour);
  w->setPalette(p);
}

// The mouse-enter and mouse-exit of a toolbar button: its hint on the status line,
// and the colour of its text.
class HoverHint : public QObject {
 public:
  HoverHint(FrmMain& frmMain, QString hint, QObject* parent)
      : QObject(parent), frmMain_(frmMain), hint_(std::move(hint)) {}

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* button = static_cast<QWidget*>(watched);
    if (event->type() == QEvent::Enter) {
      frmMain_.setStatusMsg(hint_);
      setTextColour(button, kTextHovered);
    } else if (event->type() == QEvent::Leave) {
      setTextColour(button, kTextAtRest);
    }
    return false;
  }

 private:
  FrmMain& frmMain_;
  QString hint_;
};

}  // namespace

void FrmMain::buildMenus() {
  // One parent per level: the bar, then the menu or submenu opened last.
  std::vector<QMenu*> open(3, nullptr);
  for (const MenuRow& row : MenuRows()) {
    const QString name = QLatin1String(row.name);
    const QString caption = QLatin1String(row.caption);
    QMenu* parent = row.level == 0 ? nullptr : open[static_cast<std::size_t>(row.level - 1)];
    if (row.action == UiAction::Submenu) {
      QMenu* menu = parent == nullptr ? menuBar()->addMenu(caption) : parent->addMenu(caption);
      menu->setObjectName(name);
      menu->menuAction()->setObjectName(name);
      open[static_cast<std::size_t>(row.level)] = menu;
      continue;
    }
    QAction* action = row.action == UiAction::Separator ? parent->addSeparator() : parent->addAction(caption);
    action->setObjectName(name);
    action->setProperty("commandNumber", row.number);
    if (row.action != UiAction::Separator) {
      const UiAction what = row.action;
      const int32_t number = row.number;
      connect(action, &QAction::triggered, this, [this, what, number] { doAction(what, number); });
    }
  }
}

void FrmMain::decorateToolButton(QToolButton* button, const QString& hint) {
  button->setToolButtonStyle(Qt::ToolButtonTextOnly);
  button->setMinimumSize(64, 40);
  button->setFocusPolicy(Qt::NoFocus);
  QFont f = button->font();
  f.setBold(true);
  button->setFont(f);
  setTextColour(button, kTextAtRest);
  button->setProperty("statusHint", hint);
  button->installEventFilter(new HoverHint(*this, hint, button));
}

QWidget* FrmMain::buildToolbarStrip() {
  auto* strip = new QFrame(this);
  strip->setObjectName(QStringLiteral("pnlTB_Background"));
  strip->setFrameStyle(QFrame::Panel | QFrame::Raised);
  auto* layout = new QHBoxLayout(strip);
  layout->setContentsMargins(4, 4, 4, 4);
  int index = 0;
  for (const Toolbar& bar : Toolbars()) {
    // A window narrower than its toolbar cuts it at the right, buttons whole: the row
    // keeps its own width inside a view that never scrolls.
    auto* panel = new QScrollArea(strip);
    panel->setObjectName(QStringLiteral("pnlTB_%1").arg(index));
    panel->setFrameShape(QFrame::NoFrame);
    panel->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    panel->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    panel->setWidgetResizable(true);
    panel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    auto* buttons = new QWidget(panel);
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(3);
    int i = 0;
    for (const ToolbarButton& b : bar.buttons) {
      auto* button = new QToolButton(buttons);
      button->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(bar.name)).arg(i++));
      button->setText(QLatin1String(b.caption));
      button->setProperty("commandNumber", b.number);
      decorateToolButton(button, QLatin1String(b.hint));
      const UiAction what = b.action;
      const int32_t number = b.number;
      connect(button, &QToolButton::clicked, this, [this, what, number] { doAction(what, number); });
      row->addWidget(button);
    }
    row->addStretch();
    panel->setWidget(buttons);
    panel->setFixedHeight(buttons->sizeHint().height());
    pnlTB_[static_cast<std::size_t>(index++)] = panel;
    layout->addWidget(panel, 1);
  }
  return strip;
}

}  // namespace zv::forms
