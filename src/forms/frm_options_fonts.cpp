// frmOptionsFonts, the font dialog behind it, and the font values of the settings store.
#include "forms/frm_options_fonts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QFontDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "forms/app_settings.h"
#include "forms/center_form.h"
#include "forms/messages.h"
#include "forms/panels.h"
#include "forms/settings_store.h"

namespace zv::forms {

namespace {

struct Choice {
  const char* name;
  const char* caption;
  const char* hint;
};

constexpr Choice kChecks[3] = {
    {"chkFonts_0", "Screen Fonts Only", " Allow choice among screen fonts only, not among printer fonts. "},
    {"chkFonts_1", "Fixed Fonts Only", " Allow choice among fixed width fonts only, not among proportional fonts. "},
    {"chkFonts_2", "ANSI Only",
     " Allow choice among fonts with alphanumeric characters only, not among fonts that have only symbols."},
};

constexpr Choice kSaves[2] = {
    {"optSave_0", "Save Setting", " Make your choice the default at startup. "},
    {"optSave_1", "Session Only", " Make your choice for this session only, not saving it as the default at startup. "},
};

FontChooser& chooser() {
  static FontChooser c;
  return c;
}

}  // namespace

std::unique_ptr<QFontDialog> MakeFontDialog(QWidget* parent, const QFont& current, int flags) {
  // A parent, always: a dialog without one that closes while the main window is
  // hidden (as it is behind the sifter) is the last window Qt sees go, and Qt's quit
  // then closes every window, the sifter's included.
  auto dialog = std::make_unique<QFontDialog>(parent);
  dialog->setObjectName(QStringLiteral("CMDialog1"));
  dialog->setWindowTitle(QStringLiteral("Font"));
  QFontDialog::FontDialogOptions options = QFontDialog::DontUseNativeDialog;
  if ((flags & font_flags::kFixedPitchOnly) != 0) options |= QFontDialog::MonospacedFonts;
  dialog->setOptions(options);
  if ((flags & font_flags::kAnsiOnly) != 0) {
    // The dialog's first list box is its writing system; the list of faces follows
    // it only when the box says it was chosen.
    if (auto* systems = dialog->findChild<QComboBox*>()) {
      const int latin = systems->findText(QFontDatabase::writingSystemName(QFontDatabase::Latin));
      if (latin >= 0) {
        systems->setCurrentIndex(latin);
        emit systems->activated(latin);
      }
    }
  }
  // Setting the font fills the list of faces again, now under the options above. The
  // face is the one the record is really shown in: a name the system lacks (the
  // default "Courier New" on most) would leave the dialog on its first face.
  QFont shown = current;
  shown.setFamily(QFontInfo(current).family());
  dialog->setCurrentFont(shown);
  return dialog;
}

namespace {

// The system's font dialog. Qt's own dialog, so that the flags can narrow its list:
// fixed pitch to the monospaced faces, ANSI to those that write the Latin alphabet.
// Screen and printer fonts are one and the same kind here.
std::optional<QFont> systemFontDialog(QWidget* parent, const QFont& current, int flags) {
  const std::unique_ptr<QFontDialog> dialog = MakeFontDialog(parent, current, flags);
  if (dialog->exec() != QDialog::Accepted) return std::nullopt;
  return dialog->selectedFont();
}

}  // namespace

int FontDialogFlags(bool screenOnly, bool fixedOnly, bool ansiOnly) {
  int flags = (!screenOnly && !fixedOnly && !ansiOnly) ? 3 : 0;
  flags += screenOnly ? font_flags::kScreenFonts : 3;
  if (fixedOnly) flags += font_flags::kFixedPitchOnly;
  if (ansiOnly) flags += font_flags::kAnsiOnly;
  return flags;
}

QFont ReadFontSetting(const SettingsStore& store, const QString& section) {
  auto read = [&](const char* key, const QString& defaultValue) {
    return store.GetSetting(section, QLatin1String(key), defaultValue);
  };
  QFont font(read("FontName", QStringLiteral("Courier New")));
  font.setStyleHint(QFont::TypeWriter);
  bool ok = false;
  const double size = read("FontSize", QStringLiteral("10")).trimmed().toDouble(&ok);
  font.setPointSizeF(ok && size > 0 ? size : 10.0);
  font.setBold(SettingIsTrue(read("FontBold", SettingBoolText(false))));
  font.setItalic(SettingIsTrue(read("FontItalic", SettingBoolText(false))));
  font.setUnderline(SettingIsTrue(read("FontUnderline", SettingBoolText(false))));
  font.setStrikeOut(SettingIsTrue(read("FontStrikethru", SettingBoolText(false))));
  return font;
}

void SaveFontSetting(SettingsStore& store, const QString& section, const QFont& font) {
  store.SaveSetting(section, QStringLiteral("FontName"), font.family());
  store.SaveSetting(section, QStringLiteral("FontSize"), QString::number(font.pointSizeF()));
  store.SaveSetting(section, QStringLiteral("FontBold"), SettingBoolText(font.bold()));
  store.SaveSetting(section, QStringLiteral("FontItalic"), SettingBoolText(font.italic()));
  store.SaveSetting(section, QStringLiteral("FontUnderline"), SettingBoolText(font.underline()));
  store.SaveSetting(section, QStringLiteral("FontStrikethru"), SettingBoolText(font.strikeOut()));
  store.sync();
}

FrmOptionsFonts::FrmOptionsFonts(QWidget* parent, std::atomic<int16_t>& giInterrupt)
    : QDialog(parent), giInterrupt_(giInterrupt) {
  setObjectName(QStringLiteral("frmOptionsFonts"));
  setWindowTitle(QStringLiteral("Font Options"));
  setModal(true);

  auto* layout = new QVBoxLayout(this);
  auto* checks = new QGroupBox(this);
  auto* checkRows = new QVBoxLayout(checks);
  for (int i = 0; i < 3; ++i) {
    chkFonts_[i] = new QCheckBox(QLatin1String(kChecks[i].caption), checks);
    chkFonts_[i]->setObjectName(QLatin1String(kChecks[i].name));
    chkFonts_[i]->setToolTip(QLatin1String(kChecks[i].hint));
    checkRows->addWidget(chkFonts_[i]);
  }
  layout->addWidget(checks);
  auto* saves = new QGroupBox(this);
  auto* saveRows = new QVBoxLayout(saves);
  for (int i = 0; i < 2; ++i) {
    optSave_[i] = new QRadioButton(QLatin1String(kSaves[i].caption), saves);
    optSave_[i]->setObjectName(QLatin1String(kSaves[i].name));
    optSave_[i]->setToolTip(QLatin1String(kSaves[i].hint));
    saveRows->addWidget(optSave_[i]);
  }
  layout->addWidget(saves);

  const OkayCancelRow buttons = MakeOkayCancelRow(this);
  layout->addLayout(buttons.row);
  connect(buttons.cmdOkay, &QPushButton::clicked, this, &FrmOptionsFonts::cmdOkayClick);
  connect(buttons.cmdCancel, &QPushButton::clicked, this, &FrmOptionsFonts::cmdCancelClick);
}

bool FrmOptionsFonts::screenOnly() const { return chkFonts_[0]->isChecked(); }
bool FrmOptionsFonts::fixedOnly() const { return chkFonts_[1]->isChecked(); }
bool FrmOptionsFonts::ansiOnly() const { return chkFonts_[2]->isChecked(); }
bool FrmOptionsFonts::saveSetting() const { return optSave_[0]->isChecked(); }

void FrmOptionsFonts::Reset() {
  for (QCheckBox* box : chkFonts_) box->setChecked(false);
  optSave_[1]->setChecked(true);
}

void FrmOptionsFonts::showEvent(QShowEvent* event) {
  adjustSize();
  CenterWindowOnScreen(*this);
  QDialog::showEvent(event);
}

void FrmOptionsFonts::cmdOkayClick() { accept(); }

void FrmOptionsFonts::cmdCancelClick() {
  giInterrupt_ = 1;
  QDialog::reject();
}

void FrmOptionsFonts::reject() { cmdCancelClick(); }

void SetFontChooser(FontChooser c) { chooser() = std::move(c); }

std::optional<QFont> ChooseFontOptions(FrmOptionsFonts& options, const QFont& current, SettingsStore& store,
                                       const QString& section, std::atomic<int16_t>& giInterrupt) {
  options.Reset();
  ExecModal(options);
  if (giInterrupt == 1) {
    giInterrupt = 0;
    return std::nullopt;
  }
  const int flags = FontDialogFlags(options.screenOnly(), options.fixedOnly(), options.ansiOnly());
  const std::optional<QFont> chosen = chooser() ? chooser()(current, flags) : systemFontDialog(options.parentWidget(), current, flags);
  if (!chosen) return std::nullopt;  // the font dialog's cancel says nothing
  QFont font = current;
  font.setFamily(chosen->family());
  font.setPointSizeF(chosen->pointSizeF());
  font.setBold(chosen->bold());
  font.setItalic(chosen->italic());
  font.setUnderline(chosen->underline());
  font.setStrikeOut(chosen->strikeOut());
  if (options.saveSetting()) SaveFontSetting(store, section, font);
  return font;
}

}  // namespace zv::forms
