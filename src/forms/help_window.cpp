// The help window: contents, pages with links and history, and full-text search.
#include "forms/help_window.h"

#include <QFile>
#include <QHBoxLayout>
#include <QHash>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QStyle>
#include <QTextBrowser>
#include <QTextDocument>
#include <QToolButton>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

// The pages are compiled into whatever library holds this file, often a static one;
// the linker drops a resource that nothing names, so it is named here. The macro
// must stand outside any namespace.
static void initHelpResource() { Q_INIT_RESOURCE(help); }

namespace zv::forms {

namespace {

const QString kHelpRoot = QStringLiteral(":/help/");
const QString kHelpUrlRoot = QStringLiteral("qrc:/help/");

void ensureResource() {
  static const bool done = [] {
    initHelpResource();
    return true;
  }();
  (void)done;
}

QString readResource(const QString& name) {
  ensureResource();
  QFile file(kHelpRoot + name);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QString::fromUtf8(file.readAll());
}

QString pageTitle(const QString& html, const QString& fallback) {
  static const QRegularExpression titleRe(QStringLiteral("<title>(.*?)</title>"),
                                          QRegularExpression::CaseInsensitiveOption |
                                              QRegularExpression::DotMatchesEverythingOption);
  const QRegularExpressionMatch m = titleRe.match(html);
  if (!m.hasMatch()) return fallback;
  QTextDocument doc;  // decodes entities such as &amp; in the title
  doc.setHtml(m.captured(1));
  const QString title = doc.toPlainText().simplified();
  return title.isEmpty() ? fallback : title;
}

// The words of the page as a reader sees them, made once per page.
const QString& pageText(const QString& file) {
  static QHash<QString, QString> cache;
  auto it = cache.find(file);
  if (it == cache.end()) {
    QTextDocument doc;
    doc.setHtml(HelpPageHtml(file));
    it = cache.insert(file, doc.toPlainText());
  }
  return *it;
}

QStringList queryWords(const QString& query) {
  static const QRegularExpression blanks(QStringLiteral("\\s+"));
  return query.split(blanks, Qt::SkipEmptyParts);
}

}  // namespace

const QList<HelpPage>& HelpContents() {
  static const QList<HelpPage> pages = [] {
    QList<HelpPage> list;
    // One page a line; two leading blanks put a page under the chapter above it.
    const QStringList lines = readResource(QStringLiteral("contents.txt")).split(QLatin1Char('\n'));
    for (const QString& raw : lines) {
      const QString line = raw.trimmed();
      if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) continue;
      HelpPage page;
      page.file = line;
      page.depth = raw.startsWith(QLatin1Char(' ')) ? 1 : 0;
      page.title = pageTitle(HelpPageHtml(line), line);
      list.append(page);
    }
    return list;
  }();
  return pages;
}

QString HelpPageHtml(const QString& file) {
  if (file.isEmpty() || file.contains(QLatin1Char('/'))) return {};
  return readResource(file);
}

QList<HelpHit> SearchHelp(const QString& query) {
  const QStringList words = queryWords(query);
  QList<HelpHit> hits;
  if (words.isEmpty()) return hits;
  const QString phrase = words.join(QLatin1Char(' '));
  for (const HelpPage& page : HelpContents()) {
    const QString& text = pageText(page.file);
    int total = 0;
    bool all = true;
    for (const QString& word : words) {
      const auto n = text.count(word, Qt::CaseInsensitive);
      if (n == 0) {
        all = false;
        break;
      }
      total += static_cast<int>(n);
    }
    if (!all) continue;
    const int asPhrase = words.size() > 1 ? static_cast<int>(text.count(phrase, Qt::CaseInsensitive)) : total;
    hits.append({page.file, page.title, total, asPhrase});
  }
  // A page that has the words together says more about them than one that has them
  // apart, however often.
  std::stable_sort(hits.begin(), hits.end(), [](const HelpHit& a, const HelpHit& b) {
    if (a.phraseOccurrences != b.phraseOccurrences) return a.phraseOccurrences > b.phraseOccurrences;
    return a.occurrences > b.occurrences;
  });
  return hits;
}

HelpWindow::HelpWindow(QWidget* parent) : QWidget(parent, Qt::Window) {
  setWindowTitle(tr("Zorvanta Help"));
  setAttribute(Qt::WA_QuitOnClose, false);  // an open help window doesn't keep the program alive

  // Left: contents above, search below.
  auto* left = new QWidget;
  auto* leftLayout = new QVBoxLayout(left);
  leftLayout->setContentsMargins(0, 0, 0, 0);

  contents_ = new QTreeWidget;
  contents_->setHeaderHidden(true);
  contents_->setRootIsDecorated(true);
  contents_->setUniformRowHeights(true);
  QTreeWidgetItem* chapter = nullptr;
  for (const HelpPage& page : HelpContents()) {
    auto* item = (page.depth > 0 && chapter) ? new QTreeWidgetItem(chapter) : new QTreeWidgetItem(contents_);
    item->setText(0, page.title);
    item->setData(0, kHelpFileRole, page.file);
    item->setToolTip(0, page.title);
    if (page.depth == 0) chapter = item;
  }
  contents_->expandAll();
  auto* contentsLabel = new QLabel(tr("&Contents"));
  contentsLabel->setBuddy(contents_);

  searchField_ = new QLineEdit;
  searchField_->setPlaceholderText(tr("Words to find"));
  searchField_->setClearButtonEnabled(true);
  searchField_->setToolTip(tr("Finds the pages that hold all the words typed (Ctrl+F or Alt+S)"));
  auto* searchLabel = new QLabel(tr("&Search"));
  searchLabel->setBuddy(searchField_);
  results_ = new QListWidget;
  results_->hide();  // the contents take the room until there is something to list

  leftLayout->addWidget(contentsLabel);
  leftLayout->addWidget(contents_, 3);
  leftLayout->addWidget(searchLabel);
  leftLayout->addWidget(searchField_);
  leftLayout->addWidget(results_, 1);

  // Right: history buttons over the page.
  auto* right = new QWidget;
  auto* rightLayout = new QVBoxLayout(right);
  rightLayout->setContentsMargins(0, 0, 0, 0);
  auto* buttons = new QHBoxLayout;
  auto makeButton = [this](QStyle::StandardPixmap icon, const QString& text, const QString& tip) {
    auto* b = new QToolButton;
    b->setIcon(style()->standardIcon(icon));
    b->setText(text);
    b->setToolTip(tip);
    b->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    b->setAutoRaise(true);
    return b;
  };
  backButton_ = makeButton(QStyle::SP_ArrowBack, tr("Back"), tr("Back (Alt+Left)"));
  forwardButton_ = makeButton(QStyle::SP_ArrowForward, tr("Forward"), tr("Forward (Alt+Right)"));
  auto* homeButton = makeButton(QStyle::SP_DirHomeIcon, tr("Contents Page"), tr("The first page of the manual"));
  backButton_->setEnabled(false);
  forwardButton_->setEnabled(false);
  buttons->addWidget(backButton_);
  buttons->addWidget(forwardButton_);
  buttons->addWidget(homeButton);
  buttons->addStretch();

  browser_ = new QTextBrowser;
  browser_->setOpenExternalLinks(false);
  rightLayout->addLayout(buttons);
  rightLayout->addWidget(browser_);

  auto* splitter = new QSplitter(Qt::Horizontal);
  splitter->addWidget(left);
  splitter->addWidget(right);
  splitter->setStretchFactor(0, 0);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({320, 640});
  splitter->setChildrenCollapsible(false);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(splitter);

  connect(backButton_, &QToolButton::clicked, browser_, &QTextBrowser::backward);
  connect(forwardButton_, &QToolButton::clicked, browser_, &QTextBrowser::forward);
  connect(homeButton, &QToolButton::clicked, this, [this] { showPage(QStringLiteral("index.html")); });
  connect(browser_, &QTextBrowser::backwardAvailable, backButton_, &QToolButton::setEnabled);
  connect(browser_, &QTextBrowser::forwardAvailable, forwardButton_, &QToolButton::setEnabled);
  connect(browser_, &QTextBrowser::sourceChanged, this, &HelpWindow::onSourceChanged);
  connect(contents_, &QTreeWidget::currentItemChanged, this,
          [this](QTreeWidgetItem* item) { onContentsItem(item); });
  connect(contents_, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) { onContentsItem(item); });
  connect(searchField_, &QLineEdit::textChanged, this, &HelpWindow::search);
  connect(searchField_, &QLineEdit::returnPressed, this, [this] {
    if (results_->count() > 0) onResultItem(results_->item(0));
  });
  connect(results_, &QListWidget::itemClicked, this, &HelpWindow::onResultItem);
  connect(results_, &QListWidget::itemActivated, this, &HelpWindow::onResultItem);

  // Alt+C and Alt+S come with the labels' buddies.
  auto* find = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), this);
  connect(find, &QShortcut::activated, this, [this] {
    searchField_->setFocus(Qt::ShortcutFocusReason);
    searchField_->selectAll();
  });
  auto* back = new QShortcut(QKeySequence(Qt::ALT | Qt::Key_Left), this);
  connect(back, &QShortcut::activated, browser_, &QTextBrowser::backward);
  auto* forward = new QShortcut(QKeySequence(Qt::ALT | Qt::Key_Right), this);
  connect(forward, &QShortcut::activated, browser_, &QTextBrowser::forward);
  auto* close = new QShortcut(QKeySequence(Qt::Key_Escape), this);
  connect(close, &QShortcut::activated, this, &QWidget::close);

  // 960 x 680 where the screen has room, and never past the screen's work area,
  // with room left for the window's frame and title bar; centred there.
  const QRect area = screen()->availableGeometry();
  const QSize size = QSize(960, 680).boundedTo(area.size() - QSize(16, 48)).expandedTo(minimumSizeHint());
  resize(size);
  move(area.x() + (area.width() - size.width()) / 2, area.y() + (area.height() - size.height()) / 2);
}

void HelpWindow::showPage(const QString& page) {
  ensureResource();
  browser_->setSource(QUrl(kHelpUrlRoot + page));
}

QString HelpWindow::currentPage() const { return browser_->source().fileName(); }

void HelpWindow::search(const QString& query) {
  if (searchField_->text() != query) {
    const QSignalBlocker block(searchField_);
    searchField_->setText(query);
  }
  lastWords_ = queryWords(query);
  results_->clear();
  results_->setVisible(!lastWords_.isEmpty());
  if (lastWords_.isEmpty()) return;
  const QList<HelpHit> hits = SearchHelp(query);
  for (const HelpHit& hit : hits) {
    auto* item = new QListWidgetItem(hit.title, results_);
    item->setData(kHelpFileRole, hit.file);
    item->setToolTip(tr("%n occurrence(s)", nullptr, hit.occurrences));
  }
  if (hits.isEmpty()) {
    // A line that says so, which is not a page and can't be chosen.
    auto* none = new QListWidgetItem(tr("No page holds all these words."), results_);
    none->setFlags(Qt::NoItemFlags);
  }
}

void HelpWindow::openHit(const QString& file) {
  showPage(file);
  highlightWords(lastWords_);
}

void HelpWindow::onResultItem(QListWidgetItem* item) {
  if (!item) return;
  const QString file = item->data(kHelpFileRole).toString();
  if (!file.isEmpty()) openHit(file);
}

void HelpWindow::onContentsItem(QTreeWidgetItem* item) {
  if (!item) return;
  const QString file = item->data(0, kHelpFileRole).toString();
  if (!file.isEmpty() && file != currentPage()) showPage(file);
}

void HelpWindow::onSourceChanged(const QUrl& url) {
  // The browser emits this before source() has the new address: use the argument.
  browser_->setExtraSelections({});
  const QString file = url.fileName();
  const QString title = browser_->documentTitle();
  // The front page is titled as the window is.
  const QString windowName = tr("Zorvanta Help");
  setWindowTitle(title.isEmpty() || title == windowName ? windowName : tr("%1 - %2").arg(windowName, title));
  // Keep the contents in step with pages reached by links and history.
  const QSignalBlocker block(contents_);
  for (QTreeWidgetItemIterator it(contents_); *it; ++it) {
    if ((*it)->data(0, kHelpFileRole).toString() == file) {
      contents_->setCurrentItem(*it);
      contents_->scrollToItem(*it);
      return;
    }
  }
  contents_->setCurrentItem(nullptr);
}

void HelpWindow::highlightWords(const QStringList& words) {
  QTextDocument* doc = browser_->document();
  QList<QTextEdit::ExtraSelection> marks;
  QTextCursor first;
  QTextCharFormat mark;
  mark.setBackground(QColor(255, 236, 120));
  for (const QString& word : words) {
    for (QTextCursor c = doc->find(word, 0); !c.isNull(); c = doc->find(word, c)) {
      marks.append({c, mark});
      if (first.isNull() || c.selectionStart() < first.selectionStart()) first = c;
    }
  }
  browser_->setExtraSelections(marks);
  // The words in a row, as the search ranked them, are what the reader looks for.
  if (words.size() > 1) {
    const QTextCursor phrase = doc->find(words.join(QLatin1Char(' ')), 0);
    if (!phrase.isNull()) first = phrase;
  }
  if (!first.isNull()) {
    browser_->setTextCursor(first);
    browser_->ensureCursorVisible();
    // A match at the very edge of the view is easy to miss: bring it a third down.
    QScrollBar* bar = browser_->verticalScrollBar();
    bar->setValue(bar->value() + browser_->cursorRect(first).top() - browser_->viewport()->height() / 3);
  }
}

namespace {
QPointer<HelpWindow> gHelpWindow;
}  // namespace

void ShowHelp(QWidget* parent, const QString& page) {
  if (!gHelpWindow) gHelpWindow = new HelpWindow(parent);
  gHelpWindow->showPage(page);
  gHelpWindow->show();
  gHelpWindow->raise();
  gHelpWindow->activateWindow();
}

HelpWindow* ExistingHelpWindow() { return gHelpWindow.data(); }

QString HelpPageForContext(int context) {
  // The sifter's window, its Keep and Order menus, and the sifter as a whole; the
  // file viewer and its Split dialog.
  static const QHash<int, QString> kPages{
      {116, QStringLiteral("sift.html")},
      {120, QStringLiteral("sift.html#window")},
      {121, QStringLiteral("sift.html#keeping")},
      {122, QStringLiteral("sift.html#ordering")},
      {130, QStringLiteral("viewer.html")},
      {131, QStringLiteral("split.html")},
      // The dialogs of Export Records and Find Duplicates, by their command numbers.
      {9610, QStringLiteral("export_records.html")},
      {9620, QStringLiteral("find_duplicates.html")},
  };
  return kPages.value(context, QStringLiteral("index.html"));
}

QString HelpPageForCommand(int32_t number) {
  static const QList<std::pair<std::pair<int32_t, int32_t>, const char*>> kPages{
      {{1, 1}, "filter_adhoc.html"},
      {{100, 100}, "filter_dialog_all.html"},
      {{200, 201}, "filter_dialog_pick.html"},
      {{300, 301}, "filter_dialog_separate.html"},
      {{400, 400}, "filter_dialmail.html"},
      {{500, 500}, "filter_brs.html"},
      {{600, 600}, "filter_datastar.html"},
      {{800, 800}, "filter_djnr.html"},
      {{900, 900}, "filter_nlm.html"},
      {{1100, 1100}, "filter_orbit.html"},
      {{1200, 1200}, "filter_ovid.html"},
      {{1300, 1300}, "filter_stn.html"},
      {{1600, 1600}, "sift.html#opening"},
      {{1601, 1602}, "sift.html#moving"},
      {{1603, 1605}, "sift.html#keeping"},
      {{1606, 1606}, "sift.html#ordering"},
      {{1607, 1607}, "sift.html#keeping"},
      {{1608, 1608}, "sift.html#ordering"},
      {{1609, 1611}, "sift.html#moving"},
      {{1700, 1701}, "query_by_form.html"},
      {{1800, 1801}, "rank.html"},
      {{1900, 1900}, "sort.html"},
      {{2100, 2100}, "diction.html"},
      {{2200, 2200}, "divide.html"},
      {{2300, 2300}, "undelimit.html"},
      {{2400, 2400}, "renumber.html"},
      {{2500, 2500}, "delete_labels.html"},
      {{2600, 2600}, "replace_labels.html"},
      {{2700, 2700}, "line_breaks.html"},
      {{2800, 2800}, "page_breaks.html"},
      {{2900, 2900}, "viewer.html"},
      {{2901, 2901}, "split.html"},
      {{3000, 3010}, "main_window.html#menus"},
      {{3200, 3230}, "header_cover.html"},
      {{9001, 9003}, "command_line.html#commands"},  // index, keep and order: the command line's own
      {{9610, 9610}, "export_records.html"},
      {{9620, 9620}, "find_duplicates.html"},
  };
  for (const auto& [range, page] : kPages)
    if (number >= range.first && number <= range.second) return QLatin1String(page);
  return {};
}

int HelpContextOf(const QWidget* w) {
  for (; w != nullptr; w = w->parentWidget()) {
    const int context = w->property("helpContext").toInt();
    if (context != 0) return context;
    if (w->isWindow()) break;
  }
  return 0;
}

}  // namespace zv::forms
