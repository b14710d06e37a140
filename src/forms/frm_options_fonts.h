// frmOptionsFonts and the font options of the sifter and the file viewer: the choice
// of font, and the six values kept for it in the settings store.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include <QDialog>
#include <QFont>

class QCheckBox;
class QFontDialog;
class QRadioButton;

namespace zv::forms {

class SettingsStore;

inline const QString kSifterFontsSection = QStringLiteral("Sifter Fonts");
inline const QString kViewerFontsSection = QStringLiteral("File Viewer Fonts");

// The font dialog's flag values.
namespace font_flags {
inline constexpr int kScreenFonts = 1;
inline constexpr int kPrinterFonts = 2;
inline constexpr int kHelpButton = 4;
inline constexpr int kAnsiOnly = 1024;
inline constexpr int kFixedPitchOnly = 16384;
}  // namespace font_flags

// The flags the three boxes give. With no box ticked the sum is 6 (both font kinds
// and a help button), as it always was.
int FontDialogFlags(bool screenOnly, bool fixedOnly, bool ansiOnly);

// The six values of a font section; a key never written gives its default ("Courier
// New", 10, and no style). The font asks for a fixed-pitch face where the named one
// is missing.
QFont ReadFontSetting(const SettingsStore& store, const QString& section);
// Writes "FontName", "FontSize", "FontBold", "FontItalic", "FontUnderline", "FontStrikethru".
void SaveFontSetting(SettingsStore& store, const QString& section, const QFont& font);

class FrmOptionsFonts : public QDialog {
  Q_OBJECT

 public:
  FrmOptionsFonts(QWidget* parent, std::atomic<int16_t>& giInterrupt);

  bool screenOnly() const;
  bool fixedOnly() const;
  bool ansiOnly() const;
  bool saveSetting() const;  // optSave(0) "Save Setting"

  // How the dialog comes up every time: no box ticked, "Session Only" on.
  void Reset();

  void cmdOkayClick();
  void cmdCancelClick();

 public slots:
  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  std::atomic<int16_t>& giInterrupt_;
  std::array<QCheckBox*, 3> chkFonts_{};
  std::array<QRadioButton*, 2> optSave_{};
};

// The font dialog over `parent`, its list narrowed by the flags (fixed pitch, ANSI),
// opened on the face `current` is shown in. The sifter's and the file viewer's font
// options both come here.
std::unique_ptr<QFontDialog> MakeFontDialog(QWidget* parent, const QFont& current, int flags);

// Answers the system's font dialog instead of the user: called with the font in use
// and the flags, returns the font chosen or nullopt for the dialog's cancel.
using FontChooser = std::function<std::optional<QFont>(const QFont& current, int flags)>;
void SetFontChooser(FontChooser chooser);

// The font options command: frmOptionsFonts, then the font dialog with its flags,
// over the window that owns `options`.
// Returns the font to apply, or nullopt when either dialog was cancelled (the
// interrupt that the options' Cancel raised is lowered again). With "Save Setting"
// on, the font is written under `section`.
std::optional<QFont> ChooseFontOptions(FrmOptionsFonts& options, const QFont& current, SettingsStore& store,
                                       const QString& section, std::atomic<int16_t>& giInterrupt);

}  // namespace zv::forms
