// frmRank: the boxes of terms and weights and what each key may put in them.
#include "forms/frm_rank.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include "forms/frm_main.h"
#include "forms/messages.h"

namespace zv::forms {

namespace {

// A key that types a character (not Tab, Escape or Delete, which move or close).
std::optional<char> typedChar(const QKeyEvent& key) {
  switch (key.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Escape:
    case Qt::Key_Delete:
      return std::nullopt;
    default:
      break;
  }
  const QByteArray bytes = key.text().toLatin1();
  if (bytes.size() != 1) return std::nullopt;
  return bytes.front();
}

}  // namespace

FrmRank& FrmRank::Of(FrmMain& frmMain) {
  if (auto* existing = frmMain.findChild<FrmRank*>(QStringLiteral("frmRank"))) return *existing;
  return *new FrmRank(frmMain);
}

void FrmRank::Open(FrmMain& frmMain, const Command& command) {
  frmMain.ClearStatusPanels();
  FrmRank& form = Of(frmMain);
  form.ResetForm();
  if (!SelectRecordFileDialog(frmMain, command.number)) return;
  form.opened(ChoiceOf(frmMain.job()));
  form.txtRankTerm_[0]->setFocus();
}

FrmRank::FrmRank(FrmMain& frmMain)
    : FrmRecordTool(frmMain, {"frmRank",
                              "Rank",
                              "rank.html",
                              "Processing record  ...........",
                              "Processing record line  .....",
                              {{"pnlUnalteredFileName", "Input file unaltered:"},
                               {"pnlRankedFileName", "Ranked records saved to:"},
                               {"pnlRankTableFileName", "Rank table saved to:"}}}) {
  auto* box = new QGroupBox(QStringLiteral("Enter Terms and Weights"), this);
  auto* grid = new QGridLayout(box);
  grid->addWidget(new QLabel(QStringLiteral("Terms"), box), 0, 0);
  grid->addWidget(new QLabel(QStringLiteral("Weights"), box), 0, 1);
  for (int i = 0; i < kRankSlots; ++i) {
    auto* term = new QLineEdit(box);
    term->setObjectName(QStringLiteral("txtRankTerm%1").arg(i + 1));
    term->setMinimumWidth(180);
    auto* weight = new QLineEdit(box);
    weight->setObjectName(QStringLiteral("txtRankWt%1").arg(i + 1));
    weight->setMaximumWidth(60);
    for (QLineEdit* e : {term, weight}) e->installEventFilter(this);
    txtRankTerm_[static_cast<std::size_t>(i)] = term;
    txtRankWt_[static_cast<std::size_t>(i)] = weight;
    grid->addWidget(term, i + 1, 0);
    grid->addWidget(weight, i + 1, 1);
  }
  grid->addWidget(new QLabel(QStringLiteral("*  right truncates"), box), kRankSlots + 1, 0);
  grid->addWidget(new QLabel(QStringLiteral("Low to High 1  to  9"), box), kRankSlots + 1, 1);
  inputs()->addWidget(box);
  ResetForm();
}

bool FrmRank::event(QEvent* e) {
  if (e->type() == QEvent::WindowActivate && txtRankTerm_[0]->isEnabled()) txtRankTerm_[0]->setFocus();
  if (e->type() == QEvent::MouseMove) frmMain().setStatusMsg(QString());
  return FrmRecordTool::event(e);
}

bool FrmRank::eventFilter(QObject* watched, QEvent* e) {
  if (e->type() != QEvent::KeyPress) return FrmRecordTool::eventFilter(watched, e);
  const bool term = std::find(txtRankTerm_.begin(), txtRankTerm_.end(), watched) != txtRankTerm_.end();
  const bool weight = std::find(txtRankWt_.begin(), txtRankWt_.end(), watched) != txtRankWt_.end();
  if (!term && !weight) return FrmRecordTool::eventFilter(watched, e);
  const auto* key = static_cast<QKeyEvent*>(e);
  if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
    ShowTabWarning(this);
    return true;
  }
  const std::optional<char> c = typedChar(*key);
  if (!c) return FrmRecordTool::eventFilter(watched, e);
  const std::optional<Message> refusal = term ? RankTermKeyRefusal(*c) : RankWeightKeyRefusal(*c);
  if (!refusal) return FrmRecordTool::eventFilter(watched, e);
  ShowMessage(this, MsgIcon::Warning, refusal->title, refusal->text);
  return true;  // the key is swallowed
}

std::optional<std::any> FrmRank::gather() {
  RankParams params;
  params.file = choice();
  params.large = chkNoLimits()->isChecked();
  for (std::size_t i = 0; i < kRankSlots; ++i) {
    params.terms[i] = txtRankTerm_[i]->text().toStdString();
    params.weights[i] = txtRankWt_[i]->text().toStdString();
  }
  if (const std::optional<Message> refusal = RankBeginRefusal(params)) {
    ShowMessage(this, MsgIcon::Warning, refusal->title, refusal->text);
    txtRankTerm_[0]->setFocus();
    return std::nullopt;
  }
  return std::any(params);
}

void FrmRank::setInputsEnabled(bool enabled) {
  for (QLineEdit* e : txtRankTerm_) e->setEnabled(enabled);
  for (QLineEdit* e : txtRankWt_) e->setEnabled(enabled);
}

void FrmRank::clearInputs() {
  for (QLineEdit* e : txtRankTerm_) e->clear();
  for (QLineEdit* e : txtRankWt_) e->clear();
}

}  // namespace zv::forms
