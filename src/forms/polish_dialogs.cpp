// The polishing tools' file dialogs, which check nothing of the name themselves.
#include "forms/polish_dialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

#include "forms/frm_filter.h"

namespace zv::forms {

namespace {
PolishFileAnswer gAnswer;
}

void SetPolishFileAnswer(PolishFileAnswer answer) { gAnswer = std::move(answer); }

QString ChoosePolishFile(QWidget* parent, PolishDialog kind, std::string_view dialogFilter) {
  QString path;
  if (gAnswer) {
    path = gAnswer(kind, dialogFilter);
  } else {
    // The toolkit's own dialog, not the platform's: it takes a name whether or not the
    // file is there and asks nothing about replacing one.
    QFileDialog dialog(parent, kind == PolishDialog::Open ? QStringLiteral("Open") : QStringLiteral("Save As"),
                       QDir::currentPath());
    dialog.setOption(QFileDialog::DontUseNativeDialog, true);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, true);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setAcceptMode(kind == PolishDialog::Open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    dialog.setNameFilters(FrmFilter::NameFilters(dialogFilter));
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) path = dialog.selectedFiles().front();
  }
  // The system's dialog leaves the current directory in the folder of the file chosen.
  if (!path.isEmpty()) {
    const QFileInfo info(path);
    if (info.dir().exists()) QDir::setCurrent(info.absolutePath());
  }
  return path;
}

}  // namespace zv::forms
