// frmStartup and the order of start-up.
#include "forms/frm_startup.h"

#include <QApplication>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "forms/app_settings.h"
#include "forms/center_form.h"
#include "forms/frm_main.h"
#include "forms/frm_settings.h"
#include "forms/messages.h"
#include "forms/version_record.h"

namespace zv::forms {

namespace {

QString& appPath() {
  static QString path;
  return path;
}

// The splash's picture: a page of lines, some kept and some struck out.
QPixmap splashPicture() {
  QPixmap pixmap(72, 88);
  pixmap.fill(Qt::transparent);
  QPainter p(&pixmap);
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(QPen(QColor(0, 96, 96), 2));
  p.setBrush(Qt::white);
  p.drawRoundedRect(QRectF(4, 4, 64, 80), 4, 4);
  for (int i = 0; i < 8; ++i) {
    const bool kept = i % 3 != 2;
    p.setPen(QPen(kept ? QColor(0, 128, 128) : QColor(200, 200, 200), 3));
    p.drawLine(14, 16 + i * 8, kept ? 58 : 44, 16 + i * 8);
  }
  return pixmap;
}

}  // namespace

const QString& AppPath() { return appPath(); }

FrmStartup::FrmStartup() : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint) {
  setObjectName(QStringLiteral("frmStartup"));
  setAttribute(Qt::WA_DeleteOnClose, false);
  setStyleSheet(QStringLiteral("#frmStartup { background: #f4f1e8; border: 2px solid #006060; }"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(24, 20, 24, 20);
  auto* picture = new QLabel(this);
  picture->setObjectName(QStringLiteral("imgSplash"));
  picture->setPixmap(splashPicture());
  picture->setAlignment(Qt::AlignCenter);
  auto* title = new QLabel(QLatin1String(kMainTitle), this);
  title->setObjectName(QStringLiteral("lblTitle"));
  QFont big = title->font();
  big.setPointSize(big.pointSize() * 2);
  big.setBold(true);
  title->setFont(big);
  title->setAlignment(Qt::AlignCenter);
  auto* note = new QLabel(QLatin1String(AppVersion().fileDescription), this);
  note->setObjectName(QStringLiteral("lblDescription"));
  note->setAlignment(Qt::AlignCenter);
  layout->addWidget(picture);
  layout->addWidget(title);
  layout->addWidget(note);
  adjustSize();
}

std::unique_ptr<FrmMain> StartUp(SettingsStore& store) {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  appPath() = QCoreApplication::applicationDirPath();
  FrmStartup splash;
  CenterWindowOnScreen(splash);
  splash.show();
  splash.repaint();
  QCoreApplication::processEvents();

  auto frmMain = std::make_unique<FrmMain>(store);
  bool userOverride = false;
  const std::optional<ZvError> error = LoadSettings(store, *frmMain, userOverride);
  if (!error) frmMain->frmSettings().setUserOverride(userOverride);
  frmMain->FormLoad(&splash);
  if (error)
    frmMain->showErrorForm(DisplayText(Q(ErrorFormText(ErrNumberText(error->number()), error->text(), error->reason()))));
  return frmMain;
}

}  // namespace zv::forms
