// frmSort: the tag box, typed as the field's tag stands at the left margin.
#include "forms/frm_sort.h"

#include <QFontDatabase>
#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include "forms/frm_main.h"
#include "forms/messages.h"

namespace zv::forms {

FrmSort& FrmSort::Of(FrmMain& frmMain) {
  if (auto* existing = frmMain.findChild<FrmSort*>(QStringLiteral("frmSort"))) return *existing;
  return *new FrmSort(frmMain);
}

void FrmSort::Open(FrmMain& frmMain, const Command& command) {
  frmMain.ClearStatusPanels();
  FrmSort& form = Of(frmMain);
  form.ResetForm();
  if (!SelectRecordFileDialog(frmMain, command.number)) return;
  form.opened(ChoiceOf(frmMain.job()));
  form.txtSortFieldTag_->setFocus();
}

FrmSort::FrmSort(FrmMain& frmMain)
    : FrmRecordTool(frmMain, {"frmSort",
                              "Sort",
                              "sort.html",
                              "Processing record ...........",
                              "Processing record line .....",
                              {{"pnlUnalteredFileName", "Input file unaltered:"},
                               {"pnlSortedFileName", "Sorted records saved to:"}}}) {
  const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  auto* grid = new QGridLayout;
  grid->addWidget(new QLabel(QStringLiteral("Enter tag:"), this), 0, 0);
  txtSortFieldTag_ = new QLineEdit(this);
  txtSortFieldTag_->setObjectName(QStringLiteral("txtSortFieldTag"));
  txtSortFieldTag_->setFont(fixed);
  txtSortFieldTag_->setMinimumWidth(160);
  grid->addWidget(txtSortFieldTag_, 1, 0);

  // The worked example: the tag under a ruler of its positions.
  auto* example = new QGroupBox(QStringLiteral("Example"), this);
  auto* exampleGrid = new QGridLayout(example);
  auto* ruler = new QLabel(QStringLiteral("123456"), example);
  auto* tag = new QLabel(QStringLiteral("AU -"), example);
  for (QLabel* l : {ruler, tag}) l->setFont(fixed);
  exampleGrid->addWidget(new QLabel(QStringLiteral("Position"), example), 0, 0);
  exampleGrid->addWidget(ruler, 0, 1);
  exampleGrid->addWidget(tag, 1, 1);
  auto* note = new QLabel(QStringLiteral("Include any spaces and hyphens existing to the left of the field data."), example);
  note->setWordWrap(true);
  exampleGrid->addWidget(note, 2, 0, 1, 2);
  grid->addWidget(example, 0, 1, 3, 1);
  inputs()->addLayout(grid);
  ResetForm();
}

bool FrmSort::event(QEvent* e) {
  if (e->type() == QEvent::WindowActivate && txtSortFieldTag_->isEnabled()) txtSortFieldTag_->setFocus();
  return FrmRecordTool::event(e);
}

std::optional<std::any> FrmSort::gather() {
  const std::string tag = txtSortFieldTag_->text().toStdString();
  if (const std::optional<Message> refusal = SortBeginRefusal(tag)) {
    ShowMessage(this, MsgIcon::Warning, refusal->title, refusal->text);
    txtSortFieldTag_->setFocus();
    return std::nullopt;
  }
  return std::any(SortParams{choice(), tag, chkNoLimits()->isChecked()});
}

void FrmSort::setInputsEnabled(bool enabled) { txtSortFieldTag_->setEnabled(enabled); }

void FrmSort::clearInputs() { txtSortFieldTag_->clear(); }

}  // namespace zv::forms
