// frmSettings: a folder list, the chosen folder, and which folder to start in.
#include "forms/frm_settings.h"

#include <QDir>
#include <QFileSystemModel>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

#include "forms/app_settings.h"
#include "forms/frm_main.h"
#include "forms/messages.h"
#include "forms/settings_store.h"

namespace zv::forms {

FrmSettings::FrmSettings(FrmMain& frmMain, SettingsStore& store)
    : QDialog(&frmMain), frmMain_(frmMain), store_(store) {
  setObjectName(QStringLiteral("frmSettings"));
  setWindowTitle(QStringLiteral("Settings"));
  setModal(false);
  resize(440, 420);

  auto* layout = new QVBoxLayout(this);
  auto* frame = new QGroupBox(QStringLiteral(" Startup Working Directory "), this);
  frame->setObjectName(QStringLiteral("fraWorkingDir"));
  auto* inner = new QVBoxLayout(frame);
  txtWorkingDir_ = new QLineEdit(frame);
  txtWorkingDir_->setObjectName(QStringLiteral("txtWorkingDir"));
  inner->addWidget(txtWorkingDir_);

  dirModel_ = new QFileSystemModel(this);
  dirModel_->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
  dirModel_->setRootPath(QDir::rootPath());
  dir1_ = new QTreeView(frame);
  dir1_->setObjectName(QStringLiteral("dir1"));
  dir1_->setModel(dirModel_);
  for (int column = 1; column < dirModel_->columnCount(); ++column) dir1_->hideColumn(column);
  dir1_->header()->hide();
  inner->addWidget(dir1_, 1);

  optUserOverride_ = new QRadioButton(QStringLiteral("Override with User-specified Directory"), frame);
  optUserOverride_->setObjectName(QStringLiteral("optUserOverride"));
  optLastDir_ = new QRadioButton(QStringLiteral("Use Last Working Directory"), frame);
  optLastDir_->setObjectName(QStringLiteral("optLastDir"));
  optLastDir_->setChecked(true);
  inner->addWidget(optUserOverride_);
  inner->addWidget(optLastDir_);
  layout->addWidget(frame, 1);

  auto* buttons = new QHBoxLayout;
  auto* cmdSave = new QPushButton(QStringLiteral("&Save"), this);
  cmdSave->setObjectName(QStringLiteral("cmdSave"));
  auto* cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
  cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
  // Enter in the folder field asks for Tab; it presses no button.
  cmdSave->setAutoDefault(false);
  cmdCancel->setAutoDefault(false);
  buttons->addStretch();
  buttons->addWidget(cmdSave);
  buttons->addWidget(cmdCancel);
  layout->addLayout(buttons);

  connect(cmdSave, &QPushButton::clicked, this, &FrmSettings::cmdSaveClick);
  connect(cmdCancel, &QPushButton::clicked, this, &FrmSettings::cmdCancelClick);
  connect(txtWorkingDir_, &QLineEdit::returnPressed, this, [this] { ShowTabWarning(this); });
  // The folders are read in the background: each one read around the folder shown
  // moves it, so the list is scrolled to it again.
  connect(dirModel_, &QFileSystemModel::directoryLoaded, this, [this](const QString& loaded) {
    // Not once the user has moved in the list.
    const QModelIndex shown = dirModel_->index(shownDir_);
    if (isVisible() && dir1_->currentIndex() == shown && (shownDir_ + QLatin1Char('/')).startsWith(loaded))
      dir1_->scrollTo(shown, QAbstractItemView::PositionAtCenter);
  });
  connect(dir1_->selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this](const QModelIndex& index) { txtWorkingDir_->setText(dirModel_->filePath(index)); });
}

void FrmSettings::setUserOverride(bool on) {
  optUserOverride_->setChecked(on);
  optLastDir_->setChecked(!on);
}

void FrmSettings::showDirectory(const QString& path) {
  shownDir_ = path;
  scrollToShownDirectory();
  txtWorkingDir_->setText(QDir::toNativeSeparators(path));
}

void FrmSettings::scrollToShownDirectory() {
  const QModelIndex index = dirModel_->index(shownDir_);
  if (dir1_->currentIndex() != index) dir1_->setCurrentIndex(index);
  dir1_->scrollTo(index, QAbstractItemView::PositionAtCenter);
}

void FrmSettings::showEvent(QShowEvent* event) {
  // Opening the dialog starts it at the current directory.
  showDirectory(QDir::currentPath());
  QDialog::showEvent(event);
  // Once the list has its size on the screen, the folder goes to its middle.
  QTimer::singleShot(0, this, &FrmSettings::scrollToShownDirectory);
}

void FrmSettings::cmdSaveClick() {
  store_.SaveSetting(kWorkDirSection, QStringLiteral("LastWorkDir"), QDir::currentPath());
  store_.SaveSetting(kWorkDirSection, QStringLiteral("UserWorkDir"), txtWorkingDir_->text().trimmed());
  store_.SaveSetting(kWorkDirSection, QStringLiteral("UserOverride"), SettingBoolText(optUserOverride_->isChecked()));
  store_.sync();
  frmMain_.EnableMain(true);
  hide();
}

void FrmSettings::cmdCancelClick() {
  frmMain_.EnableMain(true);
  hide();
}

void FrmSettings::reject() { cmdCancelClick(); }

}  // namespace zv::forms
