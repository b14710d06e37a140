// frmAbout: title, version, description and disclaimer from the version record.
#include "forms/frm_about.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/center_form.h"
#include "forms/messages.h"
#include "forms/programs.h"
#include "forms/version_record.h"

namespace zv::forms {

namespace {

QLabel* label(const char* name, const QString& text, QWidget* parent) {
  auto* l = new QLabel(text, parent);
  l->setObjectName(QLatin1String(name));
  l->setWordWrap(true);
  return l;
}

}  // namespace

QString FrmAbout::VersionText() {
  const VersionRecord& v = AppVersion();
  return QStringLiteral("Version %1.%2.%3").arg(v.major).arg(v.minor).arg(v.revision);
}

QString FrmAbout::DisclaimerText() {
  return QLatin1String(AppVersion().legalCopyright) + QLatin1Char(' ') + QLatin1String(AppVersion().comments);
}

FrmAbout::FrmAbout(QWidget* parent) : QDialog(parent) {
  const VersionRecord& v = AppVersion();
  setObjectName(QStringLiteral("frmAbout"));
  setWindowTitle(QStringLiteral("About ") + QLatin1String(v.title));
  setModal(true);
  setFixedWidth(420);

  auto* layout = new QVBoxLayout(this);
  QLabel* title = label("lblTitle", QLatin1String(v.title), this);
  QFont big = title->font();
  big.setPointSize(big.pointSize() * 2);
  big.setBold(true);
  title->setFont(big);
  layout->addWidget(title);
  layout->addWidget(label("lblVersion", VersionText(), this));
  layout->addWidget(label("lblDescription", QLatin1String(v.fileDescription), this));
  auto* rule = new QFrame(this);
  rule->setFrameShape(QFrame::HLine);
  rule->setFrameShadow(QFrame::Sunken);
  layout->addWidget(rule);
  layout->addWidget(label("lblDisclaimer", DisclaimerText(), this));

  auto* buttons = new QHBoxLayout;
  auto* cmdOK = new QPushButton(QStringLiteral("OK"), this);
  cmdOK->setObjectName(QStringLiteral("cmdOK"));
  cmdOK->setDefault(true);
  auto* cmdSysInfo = new QPushButton(QStringLiteral("&System Info..."), this);
  cmdSysInfo->setObjectName(QStringLiteral("cmdSysInfo"));
  buttons->addStretch();
  buttons->addWidget(cmdOK);
  buttons->addWidget(cmdSysInfo);
  layout->addLayout(buttons);
  connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(cmdSysInfo, &QPushButton::clicked, this, &FrmAbout::cmdSysInfoClick);

  adjustSize();
  CenterWindowOnScreen(*this);
}

void FrmAbout::cmdSysInfoClick() {
  const QString program = SystemInfoProgram();
  if (program.isEmpty() || !QProcess::startDetached(program, {}))
    ShowMessage(this, MsgIcon::None, QLatin1String(AppVersion().title), QLatin1String(kNoSysInfoText));
}

}  // namespace zv::forms
