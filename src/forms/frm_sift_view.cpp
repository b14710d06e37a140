// frmSift as the sifter's view: record text with byte offsets, panels, keep list,
// boxes, dialogs, and the hand-over between the sifter and the main window.
#include <algorithm>

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>

#include "forms/file_dialogs.h"
#include "forms/frm_filter.h"
#include "forms/frm_indexing.h"
#include "forms/frm_keep_file.h"
#include "forms/frm_main.h"
#include "forms/frm_sift.h"
#include "forms/frm_writing.h"
#include "forms/messages.h"
#include "forms/version_record.h"

namespace zv::forms {

namespace {

forms::MsgIcon boxIcon(zv::MsgIcon icon) {
  switch (icon) {
    case zv::MsgIcon::Information: return forms::MsgIcon::Information;
    case zv::MsgIcon::Warning: return forms::MsgIcon::Warning;
    case zv::MsgIcon::Stop: return forms::MsgIcon::Critical;
    case zv::MsgIcon::None: break;
  }
  return forms::MsgIcon::None;
}

// A message box without a title of its own takes the program's.
QString boxTitle(const std::string& title) {
  return title.empty() ? QLatin1String(AppVersion().title) : Q(title);
}

}  // namespace

void FrmSift::showErrorForm(std::string_view text) { frmMain_.showErrorForm(DisplayText(Q(text))); }

std::optional<std::string> FrmSift::chooseFile(std::string_view dialogFilter) {
  const QString filters = FrmFilter::NameFilters(dialogFilter).join(QStringLiteral(";;"));
  const QString path =
      chooser_ ? chooser_(filters)
               : ChooseFileName(isVisible() ? static_cast<QWidget*>(this) : &frmMain_,
                                {FileDialogMode::Open, QString(), FrmFilter::NameFilters(dialogFilter), QString()});
  if (path.isEmpty()) return std::nullopt;
  // The system's dialog leaves the current directory at the file's folder; the index,
  // the bookmark and the order file are named from the stem alone and live there.
  const QFileInfo info(path);
  if (info.dir().exists()) QDir::setCurrent(info.absolutePath());
  return QFile::encodeName(path).toStdString();
}

void FrmSift::setRecordText(std::string_view bytes) {
  recordBytes_.assign(bytes);
  QString text;
  text.reserve(static_cast<qsizetype>(bytes.size()));
  byteOfChar_.clear();
  byteOfChar_.reserve(bytes.size() + 1);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto c = static_cast<unsigned char>(bytes[i]);
    byteOfChar_.push_back(static_cast<int32_t>(i));
    if (c == '\r') {
      text += QLatin1Char('\n');
      if (i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;  // CR LF is one line break
    } else {
      // One byte, one character; a NUL would end the text for the editor.
      text += c == 0 ? QChar(u' ') : QChar(static_cast<char16_t>(c));
    }
  }
  byteOfChar_.push_back(static_cast<int32_t>(bytes.size()));
  txtRecord_->setPlainText(text);
  QTextCursor start(txtRecord_->document());
  txtRecord_->setTextCursor(start);
}

int FrmSift::textPosition(int32_t byteOffset) const {
  const auto at = std::lower_bound(byteOfChar_.begin(), byteOfChar_.end(), byteOffset);
  return static_cast<int>(std::min<std::ptrdiff_t>(at - byteOfChar_.begin(),
                                                   static_cast<std::ptrdiff_t>(byteOfChar_.size()) - 1));
}

int32_t FrmSift::selStart() const {
  return byteOfChar_[static_cast<std::size_t>(txtRecord_->textCursor().selectionStart())];
}

int32_t FrmSift::selLength() const {
  const QTextCursor c = txtRecord_->textCursor();
  return byteOfChar_[static_cast<std::size_t>(c.selectionEnd())] -
         byteOfChar_[static_cast<std::size_t>(c.selectionStart())];
}

void FrmSift::selectText(int32_t start, int32_t length) {
  QTextCursor c(txtRecord_->document());
  c.setPosition(textPosition(start));
  c.setPosition(textPosition(start + length), QTextCursor::KeepAnchor);
  txtRecord_->setTextCursor(c);
  txtRecord_->ensureCursorVisible();
  txtRecord_->setFocus();
}

void FrmSift::setPanel(SiftPanel panel, std::string_view text) {
  QLabel* target = nullptr;
  switch (panel) {
    case SiftPanel::pnlProFileName: target = pnlProFileName_; break;
    case SiftPanel::pnlTotRecs: target = pnlTotRecs_; break;
    case SiftPanel::pnlRecToView: target = pnlRecToView_; break;
    case SiftPanel::pnlOrder: target = pnlOrder_; break;
    case SiftPanel::pnlKeptFileName: target = pnlKeptFileName_; break;
    case SiftPanel::pnlCurrentKeepFile: target = pnlCurrentKeepFile_; break;
  }
  target->setText(QString::fromLocal8Bit(text.data(), static_cast<qsizetype>(text.size())));
}

void FrmSift::setViewMode(std::string_view gsSiftView, uint32_t backColor) {
  pnlViewMode_->setText(Q(gsSiftView));
  // The program's colour values keep red in the low byte and blue in the high one:
  // 0x80FFFF is a light yellow.
  const QColor colour(static_cast<int>(backColor & 0xFF), static_cast<int>((backColor >> 8) & 0xFF),
                      static_cast<int>((backColor >> 16) & 0xFF));
  QPalette p = pnlViewMode_->palette();
  p.setColor(QPalette::Window, colour);
  pnlViewMode_->setPalette(p);
  pnlViewMode_->setAutoFillBackground(true);
}

void FrmSift::setPartialDisplay(bool visible) { pnlPartialDisplay_->setVisible(visible); }

bool FrmSift::keepListVisible() const { return !pnlKeepList_->isHidden(); }

void FrmSift::showKeepList(bool visible) {
  pnlKeepList_->setVisible(visible);
  if (visible) pnlKeepList_->raise();
  mnuKeepList_->setChecked(visible);
  placeChildren();  // the record text makes room for the list, or takes it back
}

void FrmSift::clearKeepList() { lstKeepList_->clear(); }

void FrmSift::addKeepListItem(std::string_view text) { lstKeepList_->addItem(Q(text)); }

void FrmSift::message(const Message& m, zv::MsgIcon icon) {
  ShowMessage(this, boxIcon(icon), boxTitle(m.title), Q(m.text));
}

bool FrmSift::askYesNo(const Message& question, zv::MsgIcon icon) {
  return AskYesNo(this, boxIcon(icon), boxTitle(question.title), Q(question.text));
}

std::string FrmSift::inputBox(std::string_view prompt, std::string_view title) {
  return InputBox(this, Q(prompt), boxTitle(std::string(title))).toStdString();
}

std::optional<std::string> FrmSift::askKeepFile() {
  std::atomic<int16_t>& giInterrupt = frmMain_.job().giInterrupt;
  ExecModal(*frmKeepFile_);
  if (giInterrupt == 1) {  // Cancel
    giInterrupt = 0;
    return std::nullopt;
  }
  return QFile::encodeName(frmKeepFile_->keepFileText()).toStdString();
}

JobProgress& FrmSift::frmWriting() { return *frmWriting_; }
JobProgress& FrmSift::frmIndexing() { return *frmIndexing_; }

void FrmSift::showSifter() {
  // The main window goes first, so that the activation it gives up lands here.
  frmMain_.hide();
  show();
  raise();
  activateWindow();
  txtRecord_->setFocus();
}

void FrmSift::hideSifter() {
  frmMain_.show();
  frmMain_.EnableMain(true);
  hide();
  frmMain_.activateWindow();
}

}  // namespace zv::forms
