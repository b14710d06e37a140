// The file dialogs of the tools, made so that the tools' own checks of a name run.
#include "forms/file_dialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QRegularExpression>

#include "forms/messages.h"

namespace zv::forms {

namespace {

FileDialogAnswer& answer() {
  static FileDialogAnswer a;
  return a;
}

QString titleOf(const FileDialogRequest& request) {
  if (!request.title.isEmpty()) return request.title;
  return request.mode == FileDialogMode::Open ? QStringLiteral("Open") : QStringLiteral("Save As");
}

}  // namespace

QStringList DialogNameFilters(std::string_view dialogFilter) {
  const QStringList parts = Q(dialogFilter).split(QLatin1Char('|'));
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    // Qt would take a pattern in the text's brackets, and "*.*" would hide the files
    // without an extension. Captures and record files come in either case.
    QString text = parts[i];
    text.remove(QRegularExpression(QStringLiteral("\\s*\\(.*\\)")));
    QStringList patterns;
    for (const QString& p : parts[i + 1].split(QLatin1Char(';'))) {
      if (p == QLatin1String("*.*")) {
        patterns << QStringLiteral("*");
      } else {
        patterns << p;
        if (p.toLower() != p) patterns << p.toLower();
      }
    }
    filters << text + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) + QLatin1Char(')');
  }
  return filters;
}

std::unique_ptr<QFileDialog> MakeFileDialog(QWidget* parent, const FileDialogRequest& request) {
  auto dialog = std::make_unique<QFileDialog>(
      parent, titleOf(request), request.directory.isEmpty() ? QDir::currentPath() : request.directory);
  dialog->setObjectName(QStringLiteral("CMDialog1"));
  // AnyFile: Qt's "File not found. Please verify the correct file name was given."
  // comes only with the modes that want an existing file.
  dialog->setFileMode(QFileDialog::AnyFile);
  dialog->setAcceptMode(request.mode == FileDialogMode::Open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
  dialog->setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite);
  if (!request.nameFilters.isEmpty()) dialog->setNameFilters(request.nameFilters);
  return dialog;
}

QString ChooseFileName(QWidget* parent, const FileDialogRequest& request) {
  if (answer()) return answer()(request);
  const std::unique_ptr<QFileDialog> dialog = MakeFileDialog(parent, request);
  if (dialog->exec() != QDialog::Accepted) return {};
  const QStringList chosen = dialog->selectedFiles();
  return chosen.isEmpty() ? QString() : chosen.first();
}

QString GetOpenFileName(QWidget* parent, std::string_view dialogFilter, const QString& title) {
  return ChooseFileName(parent, {FileDialogMode::Open, title, DialogNameFilters(dialogFilter), {}});
}

QString GetSaveFileName(QWidget* parent, std::string_view dialogFilter, const QString& title) {
  return ChooseFileName(parent, {FileDialogMode::Save, title, DialogNameFilters(dialogFilter), {}});
}

void SetFileDialogAnswer(FileDialogAnswer a) { answer() = std::move(a); }

}  // namespace zv::forms
