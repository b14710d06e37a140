// frmCover: the page's fields, the three save options, Save, Save Settings and Okay.
#include "forms/frm_cover.h"

#include <algorithm>

#include <QApplication>
#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "forms/frm_main.h"
#include "forms/help_window.h"
#include "forms/messages.h"
#include "forms/panels.h"
#include "polish/polish_commands.h"

namespace zv::forms {

namespace {

QRadioButton* option(const char* name, const char* text, QButtonGroup* group, int id, QWidget* parent) {
  auto* o = new QRadioButton(QLatin1String(text), parent);
  o->setObjectName(QLatin1String(name));
  group->addButton(o, id);
  return o;
}

QLineEdit* line(const char* name, QWidget* parent) {
  auto* e = new QLineEdit(parent);
  e->setObjectName(QLatin1String(name));
  return e;
}

QPlainTextEdit* box(const char* name, QWidget* parent) {
  auto* e = new QPlainTextEdit(parent);
  e->setObjectName(QLatin1String(name));
  e->setTabChangesFocus(true);
  e->setFixedHeight(70);
  return e;
}

QPushButton* button(const char* name, const char* text, QWidget* parent) {
  auto* b = new QPushButton(QLatin1String(text), parent);
  b->setObjectName(QLatin1String(name));
  b->setAutoDefault(false);
  return b;
}

// A group's choice by its id, or none when the id is 0.
void check(QButtonGroup* group, int id) {
  if (QAbstractButton* b = group->button(id)) {
    b->setChecked(true);
    return;
  }
  group->setExclusive(false);
  for (QAbstractButton* b : group->buttons()) b->setChecked(false);
  group->setExclusive(true);
}

int checkedId(const QButtonGroup* group) { return std::max(group->checkedId(), 0); }

std::string text(const QLineEdit* e) { return e->text().toStdString(); }
std::string text(const QPlainTextEdit* e) { return BoxText(e->toPlainText().toStdString()); }

}  // namespace

FrmCover::FrmCover(FrmMain& frmMain) : QDialog(&frmMain), frmMain_(frmMain) {
  setObjectName(QStringLiteral("frmCover"));
  setWindowTitle(QStringLiteral("Header/Cover"));
  setModal(true);
  setMouseTracking(true);

  auto* layout = new QVBoxLayout(this);
  auto* top = new QHBoxLayout;

  auto* toFrame = new QGroupBox(QStringLiteral("To"), this);
  auto* toLayout = new QVBoxLayout(toFrame);
  toGroup_ = new QButtonGroup(this);
  auto* toOptions = new QHBoxLayout;
  toOptions->addWidget(option("optRequester", "Requester", toGroup_, static_cast<int>(ToLabel::Requester), toFrame));
  toOptions->addWidget(option("optClient", "Client", toGroup_, static_cast<int>(ToLabel::Client), toFrame));
  toLayout->addLayout(toOptions);
  txtTo_ = line("txtTo", toFrame);
  toLayout->addWidget(txtTo_);
  toLayout->addStretch();
  top->addWidget(toFrame);

  auto* fromFrame = new QGroupBox(QStringLiteral("From"), this);
  auto* fromLayout = new QVBoxLayout(fromFrame);
  fromGroup_ = new QButtonGroup(this);
  auto* fromOptions = new QHBoxLayout;
  fromOptions->addWidget(option("optLibrary", "Library", fromGroup_, static_cast<int>(FromLabel::Library), fromFrame));
  fromOptions->addWidget(
      option("optSearcher", "Searcher", fromGroup_, static_cast<int>(FromLabel::Searcher), fromFrame));
  fromOptions->addWidget(option("optFirm", "Research Firm", fromGroup_, static_cast<int>(FromLabel::Firm), fromFrame));
  fromLayout->addLayout(fromOptions);
  const char* fromNames[] = {"txtFrom_1", "txtFrom_2", "txtFrom_3"};
  for (std::size_t i = 0; i < txtFrom_.size(); ++i) {
    txtFrom_[i] = line(fromNames[i], fromFrame);
    fromLayout->addWidget(txtFrom_[i]);
  }
  top->addWidget(fromFrame);
  layout->addLayout(top);

  auto* grid = new QGridLayout;
  txtSubject_ = line("txtSubject", this);
  txtDate_ = line("txtDate", this);
  txtJobNo_ = line("txtJobNo", this);
  grid->addWidget(new QLabel(QStringLiteral("Subject:"), this), 0, 0);
  grid->addWidget(txtSubject_, 0, 1, 1, 3);
  grid->addWidget(new QLabel(QStringLiteral("Date:"), this), 1, 0);
  grid->addWidget(txtDate_, 1, 1);
  grid->addWidget(new QLabel(QStringLiteral("Job No.:"), this), 1, 2);
  grid->addWidget(txtJobNo_, 1, 3);
  layout->addLayout(grid);
  txtDatabase_ = box("txtDatabase", this);
  txtMemo_ = box("txtMemo", this);
  layout->addWidget(new QLabel(QStringLiteral("Database(s) / Date(s) Searched"), this));
  layout->addWidget(txtDatabase_);
  layout->addWidget(new QLabel(QStringLiteral("Memo:"), this));
  layout->addWidget(txtMemo_);

  auto* saveFrame = new QGroupBox(QStringLiteral("Save"), this);
  saveFrame->setObjectName(QStringLiteral("pnl3DSaveOptions"));
  saveFrame->setMouseTracking(true);
  saveFrame->installEventFilter(this);
  pnl3DSaveOptions_ = saveFrame;
  auto* saveLayout = new QHBoxLayout(saveFrame);
  saveGroup_ = new QButtonGroup(this);
  saveLayout->addWidget(
      option("optPrefix", "Prefix to File", saveGroup_, static_cast<int>(SaveMode::Prefix), saveFrame));
  saveLayout->addWidget(option("optPrefixWithBreak", "Prefix with Page Break", saveGroup_,
                               static_cast<int>(SaveMode::PrefixWithBreak), saveFrame));
  saveLayout->addWidget(
      option("optSepFile", "Separate File", saveGroup_, static_cast<int>(SaveMode::SepFile), saveFrame));
  layout->addWidget(saveFrame);

  pnlProgress_ = PercentBar(this, false);
  layout->addWidget(pnlProgress_);

  auto* buttons = new QHBoxLayout;
  cmdSave_ = button("cmdSave", "Save", this);
  cmdSaveIni_ = button("cmdSaveIni", "Save Settings", this);
  cmdOkay_ = button("cmdOkay", "Okay", this);
  cmdCancel_ = button("cmdCancel", "Cancel", this);
  cmdHelp_ = button("cmdHelp", "Help", this);
  buttons->addStretch();
  for (QPushButton* b : {cmdSave_, cmdSaveIni_, cmdOkay_, cmdCancel_, cmdHelp_}) {
    buttons->addWidget(b);
    b->installEventFilter(this);
  }
  buttons->addStretch();
  layout->addLayout(buttons);

  connect(cmdSave_, &QPushButton::clicked, this, &FrmCover::cmdSaveClick);
  connect(cmdSaveIni_, &QPushButton::clicked, this, [this] { frmMain_.RunCommand(polish::kCoverSaveSettings); });
  connect(cmdCancel_, &QPushButton::clicked, this, &FrmCover::quit);
  connect(cmdOkay_, &QPushButton::clicked, this, &FrmCover::quit);
  connect(cmdHelp_, &QPushButton::clicked, this, [this] { ShowHelp(this, QStringLiteral("header_cover.html")); });
  setFields(CoverFields{});
  ResetCoverForm();
}

CoverFields FrmCover::fields() const {
  CoverFields f;
  f.toLabel = static_cast<ToLabel>(checkedId(toGroup_));
  f.fromLabel = static_cast<FromLabel>(checkedId(fromGroup_));
  f.saveMode = static_cast<SaveMode>(checkedId(saveGroup_));
  f.to = text(txtTo_);
  f.from1 = text(txtFrom_[0]);
  f.from2 = text(txtFrom_[1]);
  f.from3 = text(txtFrom_[2]);
  f.subject = text(txtSubject_);
  f.date = text(txtDate_);
  f.jobNo = text(txtJobNo_);
  f.database = text(txtDatabase_);
  f.memo = text(txtMemo_);
  return f;
}

void FrmCover::setFields(const CoverFields& f) {
  check(toGroup_, static_cast<int>(f.toLabel));
  check(fromGroup_, static_cast<int>(f.fromLabel));
  check(saveGroup_, static_cast<int>(f.saveMode));
  const auto q = [](const std::string& s) { return QString::fromStdString(s); };
  txtTo_->setText(q(f.to));
  txtFrom_[0]->setText(q(f.from1));
  txtFrom_[1]->setText(q(f.from2));
  txtFrom_[2]->setText(q(f.from3));
  txtSubject_->setText(q(f.subject));
  txtJobNo_->setText(q(f.jobNo));
  // The box shows a line end as the user typed it.
  txtDatabase_->setPlainText(q(f.database).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
  txtMemo_->setPlainText(q(f.memo).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
}

void FrmCover::ResetCoverForm() {
  for (QLineEdit* e : {txtDate_, txtJobNo_, txtFrom_[0], txtFrom_[1], txtFrom_[2], txtTo_, txtSubject_}) e->clear();
  txtDatabase_->clear();
  txtMemo_->clear();
  for (QPushButton* b : {cmdSave_, cmdCancel_, cmdHelp_, cmdSaveIni_}) b->show();
  cmdOkay_->hide();
  pnlProgress_->setValue(0);
  pnlProgress_->hide();
  txtTo_->setFocus();
}

void FrmCover::savingStarted() {
  for (QPushButton* b : {cmdCancel_, cmdSave_, cmdHelp_, cmdSaveIni_}) b->hide();
}

void FrmCover::savingDone() {
  QApplication::restoreOverrideCursor();
  cmdOkay_->show();
  cmdOkay_->setFocus();
}

void FrmCover::quit() {
  ResetCoverForm();
  frmMain_.EnableMain(true);
  if (isVisible()) reject();
  hide();
  frmMain_.activateWindow();
}

void FrmCover::jobStarted(const Start& start) {
  if (start.totalLines > 0) pnlProgress_->show();
}

void FrmCover::lineDone(int32_t line, int32_t totalLines) {
  if (totalLines <= 0 || (line & 255) != 1) return;
  pnlProgress_->setValue(static_cast<int>(static_cast<int64_t>(line) * 100 / totalLines));
  QCoreApplication::processEvents();
}

void FrmCover::cmdSaveClick() {
  const CoverFields f = fields();
  if (f.fromLabel == FromLabel::Library || f.fromLabel == FromLabel::Searcher)
    frmMain_.RunCommand(polish::kCoverLibrary);
  else if (f.fromLabel == FromLabel::Firm)
    frmMain_.RunCommand(polish::kCoverFirm);
}

bool FrmCover::event(QEvent* e) {
  if (e->type() == QEvent::WindowActivate) txtDate_->setText(QString::fromStdString(TodayCoverDate()));
  if (e->type() == QEvent::MouseMove) frmMain_.setStatusMsg(QString());
  return QDialog::event(e);
}

bool FrmCover::eventFilter(QObject* watched, QEvent* e) {
  if (e->type() == QEvent::Enter) {
    if (watched == cmdCancel_) frmMain_.setStatusMsg(QStringLiteral("Quit without saving any header or cover page."));
    if (watched == cmdSave_)
      frmMain_.setStatusMsg(QStringLiteral("Write the header or cover page to disk with the currently selected options."));
    if (watched == cmdSaveIni_)
      frmMain_.setStatusMsg(
          QStringLiteral("Save current settings of Requester/Client, Library/Searcher/Research Firm, etc."));
  }
  if (watched == pnl3DSaveOptions_ && e->type() == QEvent::MouseMove) frmMain_.setStatusMsg(QString());
  return QDialog::eventFilter(watched, e);
}

FrmCover& CoverForm(FrmMain& frmMain) {
  if (auto* form = frmMain.findChild<FrmCover*>(QStringLiteral("frmCover"), Qt::FindDirectChildrenOnly)) return *form;
  return *new FrmCover(frmMain);
}

}  // namespace zv::forms
