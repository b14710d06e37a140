// frmQBF: filling the form, its key rules, submitting it and watching the query run.
#include "forms/frm_qbf.h"

#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/center_form.h"
#include "forms/frm_main.h"
#include "forms/help_window.h"
#include "forms/messages.h"
#include "forms/panels.h"

namespace zv::forms {

namespace {

constexpr const char* kBoxNames[9] = {"txt11", "txt12", "txt13", "txt21", "txt22", "txt23", "txt31", "txt32", "txt33"};
constexpr const char* kBoxHints[9] = {
    "The first search term of the first nest.", "The second search term of the first nest.",
    "The third search term of the first nest.", "The first search term of the AND nest.",
    "The second search term of the AND nest.",  "The third search term of the AND nest.",
    "The first search term of the NOT nest.",   "The second search term of the NOT nest.",
    "The third search term of the NOT nest.",
};
constexpr std::string_view kQueryDialogFilter = ".QRY Files|*.QRY|All Files|*.*";

QLabel* label(const char* text, QWidget* parent) { return new QLabel(QLatin1String(text), parent); }

}  // namespace

FrmQBF& FrmQBF::Of(FrmMain& frmMain) {
  if (auto* existing = frmMain.findChild<FrmQBF*>(QStringLiteral("frmQBF"))) return *existing;
  return *new FrmQBF(frmMain);
}

void FrmQBF::Open(FrmMain& frmMain, const Command& command) {
  if (!SelectRecordFileDialog(frmMain, command.number)) return;
  FrmQBF& form = Of(frmMain);
  form.choice_ = ChoiceOf(frmMain.job());
  form.pnlQueriedFile_->setText(Q(form.choice_.proFile));
  CenterForm(form, frmMain);
  form.show();
  form.raise();
  form.activateWindow();
  frmMain.EnableMain(false);
}

FrmQBF::FrmQBF(FrmMain& frmMain) : AnalysisJobDialog(frmMain, "frmQBF", "Query by Form") {

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(label("Choose key words:", this));
  auto* grid = new QGridLayout;
  const char* nestLabels[3] = {"", "AND", "NOT"};
  for (int nest = 0; nest < 3; ++nest) {
    grid->addWidget(label(nestLabels[nest], this), nest, 0);
    for (int i = 0; i < 3; ++i) {
      const int at = nest * 3 + i;
      auto* box = new QLineEdit(this);
      box->setObjectName(QLatin1String(kBoxNames[at]));
      box->setMinimumWidth(140);
      box->installEventFilter(this);
      SetStatusHint(box, frmMain_, QLatin1String(kBoxHints[at]));
      txt_[static_cast<std::size_t>(at)] = box;
      grid->addWidget(box, nest, 1 + i * 2);
      if (i < 2) {
        auto* orPanel = label("OR", this);
        orPanel->setAlignment(Qt::AlignCenter);
        grid->addWidget(orPanel, nest, 2 + i * 2);
      }
    }
  }
  layout->addLayout(grid);

  auto* files = new QGridLayout;
  pnlISS_ = SunkenPanel("pnlISS", this, 22);
  pnlQueryFile_ = SunkenPanel("pnlQueryFile", this, 22);
  pnlQueriedFile_ = SunkenPanel("pnlQueriedFile", this, 22);
  files->addWidget(label("Implied search statement:", this), 0, 0);
  files->addWidget(pnlISS_, 0, 1);
  files->addWidget(label("Query file:", this), 1, 0);
  files->addWidget(pnlQueryFile_, 1, 1);
  files->addWidget(label("Queried file:", this), 2, 0);
  files->addWidget(pnlQueriedFile_, 2, 1);
  files->setColumnStretch(1, 1);
  layout->addLayout(files);

  auto odometer = [this](const char* name) { return OdometerPanel(name, this, 22); };
  auto* counts = new QHBoxLayout;
  auto* searching = new QGroupBox(QStringLiteral("Searching"), this);
  auto* searchGrid = new QGridLayout(searching);
  searching_.recOdom = odometer("pnlSearchingRecord");
  searching_.lineOdom = odometer("pnlSearchingLine");
  searchGrid->addWidget(label("Record number ...", searching), 0, 0);
  searchGrid->addWidget(searching_.recOdom, 0, 1);
  searchGrid->addWidget(label("Record line ..........", searching), 1, 0);
  searchGrid->addWidget(searching_.lineOdom, 1, 1);
  auto* hits = new QGroupBox(QStringLiteral("Hits"), this);
  auto* hitGrid = new QGridLayout(hits);
  hits_.recOdom = odometer("pnlHitRecord");
  hits_.lineOdom = odometer("pnlHitLine");
  hitGrid->addWidget(label("Records hit .........", hits), 0, 0);
  hitGrid->addWidget(hits_.recOdom, 0, 1);
  hitGrid->addWidget(label("Writing hit line .....", hits), 1, 0);
  hitGrid->addWidget(hits_.lineOdom, 1, 1);
  counts->addWidget(searching);
  counts->addWidget(hits);
  layout->addLayout(counts);

  pnlProgress_ = PercentBar(this);
  searching_.bar = pnlProgress_;
  layout->addWidget(pnlProgress_);

  setButtons(MakeJobButtons(this, "cmdSubmit", "Submit", QStringLiteral("query_by_form.html")));
  layout->addLayout(buttons_.row);
  SetStatusHint(buttons_.cmdCancel, frmMain_, QStringLiteral("Abandon this query."));
  SetStatusHint(buttons_.cmdCancel2, frmMain_, QStringLiteral("Interrupt and abandon this query."));
  SetStatusHint(buttons_.cmdBegin, frmMain_, QStringLiteral("Submit the query and have 'hit' records written to a new file."));

  connect(buttons_.cmdBegin, &QPushButton::clicked, this, &FrmQBF::cmdSubmitClick);
  ResetForm();
}

QbfBoxes FrmQBF::boxes() const {
  QbfBoxes b;
  for (std::size_t i = 0; i < 9; ++i) b[i] = txt_[i]->text().toStdString();
  return b;
}

void FrmQBF::showStatement() { pnlISS_->setText(Q(ImpliedSearchStatement(boxes()).gsSearchStatement)); }

void FrmQBF::ResetForm() {
  buttons_.idle();
  for (QLineEdit* box : txt_) {
    box->setEnabled(true);
    box->clear();
  }
  for (QLabel* p : {pnlISS_, pnlQueryFile_, pnlQueriedFile_}) p->clear();
  searching_.reset();
  hits_.reset();
  choice_ = {};
  txt_[0]->setFocus();
  hide();
}

void FrmQBF::cmdSubmitClick() {
  if (txt_[0]->text().isEmpty()) {
    const Message m = KeyWordError();
    ShowMessage(this, MsgIcon::Warning, m.title, m.text);
    txt_[0]->setFocus();
    return;
  }
  std::string queryFile;
  for (;;) {
    queryFile = ChooseAnalysisFile(this, FileDialogKind::Save, kQueryDialogFilter);
    if (queryFile.empty()) {
      // The save dialog's cancel: the terms are lost.
      ResetForm();
      frmMain_.EnableMain(true);
      return;
    }
    const std::optional<Message> refusal = RefuseQueryFile(queryFile, choice_.proFile);
    if (!refusal) break;
    ShowMessage(this, MsgIcon::Warning, refusal->title, refusal->text);
  }
  QCoreApplication::processEvents();
  runQuery(queryFile);
}

void FrmQBF::runQuery(const std::string& queryFile) {
  buttons_.running();
  for (QLineEdit* box : txt_) box->setEnabled(false);
  pnlQueryFile_->setText(Q(queryFile));
  QCoreApplication::processEvents();

  const JobResult result = frmMain_.runJob(kRunQbf, QbfParams{choice_, boxes(), queryFile}, *this);
  switch (result.outcome) {
    case JobOutcome::Done:
    case JobOutcome::ZeroRecords:
      if (result.message) ShowMessage(this, MsgIcon::Warning, result.message->title, result.message->text);
      pnlProgress_->setValue(100);
      buttons_.done();
      break;
    default:
      // Interrupted, or failed (frmError has said so): nothing of the query is left.
      ResetForm();
      frmMain_.EnableMain(true);
      frmMain_.activateWindow();
      break;
  }
}

void FrmQBF::cmdOkayClick() {
  frmMain_.EnableMain(true);
  ResetForm();
  frmMain_.activateWindow();
}

void FrmQBF::lineDone(int32_t line, int32_t totalLines) {
  if (searching_.lineDone(line, totalLines)) hits_.show();
}

void FrmQBF::jobFinished(std::string_view finishTime, std::string_view elapsed) {
  searching_.show();
  hits_.show();
  frmMain_.showJobFinish(Q(finishTime), Q(elapsed));
}

bool FrmQBF::event(QEvent* e) {
  if (e->type() == QEvent::WindowActivate)
    frmMain_.setStatusMsg(QStringLiteral("Enter the key words, observing the OR, AND and NOT operators."));
  else if (e->type() == QEvent::MouseMove)
    frmMain_.setStatusMsg(QString());
  return QDialog::event(e);
}

bool FrmQBF::eventFilter(QObject* watched, QEvent* e) {
  const auto it = std::find(txt_.begin(), txt_.end(), watched);
  if (it == txt_.end()) return QDialog::eventFilter(watched, e);
  const auto at = static_cast<std::size_t>(it - txt_.begin());
  switch (e->type()) {
    case QEvent::KeyPress: {
      const int key = static_cast<QKeyEvent*>(e)->key();
      if (key != Qt::Key_Return && key != Qt::Key_Enter) break;
      // Swallowed; the first box of each nest says nothing, the others warn.
      if (at % 3 != 0) ShowTabWarning(this);
      return true;
    }
    case QEvent::KeyRelease:
      showStatement();
      break;
    case QEvent::FocusIn:
      if (at != 0 && txt_[0]->text().isEmpty() && !checkingFirstTerm_ && isVisible()) {
        // The box that lost the focus to the message gets it back when the message
        // closes; the guard keeps that from asking again.
        checkingFirstTerm_ = true;
        const Message m = KeyWordError();
        ShowMessage(this, MsgIcon::Warning, m.title, m.text);
        setEnabled(true);
        txt_[0]->setFocus();
        checkingFirstTerm_ = false;
      }
      break;
    default:
      break;
  }
  return QDialog::eventFilter(watched, e);
}

}  // namespace zv::forms
