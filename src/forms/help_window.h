// The help window: the program's manual from the :/help resource, with contents and search.
#pragma once

#include <cstdint>

#include <QList>
#include <QString>
#include <QWidget>

class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QTextBrowser;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;
class QUrl;

namespace zv::forms {

// The item data role under which the contents tree and the hit list keep the page's
// file name.
inline constexpr int kHelpFileRole = Qt::UserRole;

// One entry of the manual's contents.
struct HelpPage {
  QString file;   // the page's name in the help resource, e.g. "filter_dialog_all.html"
  QString title;  // the text of the page's <title>
  int depth = 0;  // 0 for a chapter, 1 for a page under the chapter before it
};

// The manual's pages in reading order, as help/contents.txt lists them.
const QList<HelpPage>& HelpContents();

// The HTML of a page of the manual; empty if the resource has no such page.
QString HelpPageHtml(const QString& file);

// A page that holds every word of a search.
struct HelpHit {
  QString file;
  QString title;
  int occurrences = 0;        // of all the words, each counted apart, in the page's text
  int phraseOccurrences = 0;  // of the words in a row, as typed, one blank apart
};

// The pages whose text (the HTML without its markup) holds every word of `query`,
// ignoring case. The pages that hold the words in a row come first, most such
// occurrences first; then the pages with most occurrences of the words apart; equals
// in reading order.
// A query of blanks finds nothing.
QList<HelpHit> SearchHelp(const QString& query);

// One window for the whole manual. ShowHelp creates it the first time and reuses it.
class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  explicit HelpWindow(QWidget* parent = nullptr);

  // Shows a page of the manual, "index.html" or "errors.html#zero".
  void showPage(const QString& page);
  // The page shown, without its fragment ("errors.html").
  QString currentPage() const;

  // Runs a search as typing it in the search field does, and lists the hits.
  void search(const QString& query);
  // Opens a page of the hit list and marks the search words in it. The first
  // occurrence of the words in a row, or else of any of them, is selected and
  // scrolled into view.
  void openHit(const QString& file);

  QTreeWidget* contentsTree() const { return contents_; }
  QLineEdit* searchField() const { return searchField_; }
  QListWidget* searchResults() const { return results_; }
  QTextBrowser* browser() const { return browser_; }

 private:
  void onSourceChanged(const QUrl& url);
  void onContentsItem(QTreeWidgetItem* item);
  void onResultItem(QListWidgetItem* item);
  void highlightWords(const QStringList& words);

  QTreeWidget* contents_ = nullptr;
  QLineEdit* searchField_ = nullptr;
  QListWidget* results_ = nullptr;
  QTextBrowser* browser_ = nullptr;
  QToolButton* backButton_ = nullptr;
  QToolButton* forwardButton_ = nullptr;
  QStringList lastWords_;
};

// Shows the help window at `page`, raised and active. The window is made once, as a
// window of its own over `parent`, and reused by every later call.
void ShowHelp(QWidget* parent, const QString& page = QStringLiteral("index.html"));

// Help contexts: a number an element carries in its "helpContext" property, and the
// page of the manual that F1 opens for it. A number the manual has no page for, and
// 0, give the contents page.
QString HelpPageForContext(int context);
// The context of `w` or of the nearest element around it that has one; 0 for none.
int HelpContextOf(const QWidget* w);

// The page of the manual that tells about command `number` of the command table (a
// fragment may follow: "sift.html#keeping"); empty for a number no tool has.
QString HelpPageForCommand(int32_t number);

// The help window if ShowHelp has made it, else null.
HelpWindow* ExistingHelpWindow();

}  // namespace zv::forms
