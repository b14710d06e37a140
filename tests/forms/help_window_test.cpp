// The manual and its window: every page present and linked right, and the search.
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QSet>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTreeWidget>

#include "forms/help_window.h"

using zv::forms::HelpContents;
using zv::forms::HelpPageHtml;
using zv::forms::HelpWindow;
using zv::forms::SearchHelp;

namespace {

QStringList contentsFiles() {
  QStringList files;
  for (const auto& page : HelpContents()) files << page.file;
  return files;
}

// The anchors a page offers to links, as the browser sees them after parsing.
QSet<QString> anchorsOf(const QString& html) {
  QTextDocument doc;
  doc.setHtml(html);
  QSet<QString> names;
  for (QTextBlock b = doc.begin(); b.isValid(); b = b.next()) {
    for (const QString& n : b.blockFormat().property(QTextFormat::AnchorName).toStringList()) names << n;
    for (auto it = b.begin(); !it.atEnd(); ++it)
      for (const QString& n : it.fragment().charFormat().anchorNames()) names << n;
  }
  return names;
}

QStringList hitFiles(const QString& query) {
  QStringList files;
  for (const auto& hit : SearchHelp(query)) files << hit.file;
  return files;
}

}  // namespace

class HelpWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void contentsListsEveryPageOnce();
  void everyPageLoadsWithItsTitle();
  void internalLinksResolve();
  void pagesAreSelfContained();
  void searchFindsPagesByTheirText();
  void searchFindsNothingForNonsense();
  void searchHitOpensPageWithWordSelected();
  void linksHistoryAndContentsStayInStep();
  void keysMoveFocusNavigateAndClose();
  void showHelpReusesOneWindow();
};

void HelpWindowTest::contentsListsEveryPageOnce() {
  const QStringList listed = contentsFiles();
  QVERIFY(listed.size() > 10);
  QCOMPARE(listed.first(), QStringLiteral("index.html"));
  QCOMPARE(QSet<QString>(listed.begin(), listed.end()).size(), listed.size());

  // No page of the resource is left out of the contents.
  const QStringList shipped = QDir(QStringLiteral(":/help")).entryList({QStringLiteral("*.html")}, QDir::Files);
  for (const QString& file : shipped) QVERIFY2(listed.contains(file), qPrintable(file + " is not in the contents"));
  QCOMPARE(shipped.size(), listed.size());

  // The tree shows the same pages in the same order, pages under their chapters.
  HelpWindow w;
  QStringList inTree;
  for (QTreeWidgetItemIterator it(w.contentsTree()); *it; ++it) inTree << (*it)->data(0, zv::forms::kHelpFileRole).toString();
  QCOMPARE(inTree, listed);
  const auto dialogAll = w.contentsTree()->findItems(QStringLiteral("DIALOG: All Types to One File"),
                                                      Qt::MatchExactly | Qt::MatchRecursive);
  QCOMPARE(dialogAll.size(), 1);
  QVERIFY(dialogAll.first()->parent());
  QCOMPARE(dialogAll.first()->parent()->data(0, zv::forms::kHelpFileRole).toString(), QStringLiteral("filters.html"));
}

void HelpWindowTest::everyPageLoadsWithItsTitle() {
  HelpWindow w;
  for (const auto& page : HelpContents()) {
    const QString html = HelpPageHtml(page.file);
    QVERIFY2(!html.isEmpty(), qPrintable(page.file));
    QVERIFY2(page.title != page.file, qPrintable(page.file + " has no <title>"));
    w.showPage(page.file);
    QCOMPARE(w.currentPage(), page.file);
    QCOMPARE(w.browser()->documentTitle(), page.title);
    QVERIFY2(w.browser()->toPlainText().trimmed().size() > 200, qPrintable(page.file + " is nearly empty"));
  }
  QVERIFY(HelpPageHtml(QStringLiteral("no_such_page.html")).isEmpty());
  QVERIFY(HelpPageHtml(QStringLiteral("../help/index.html")).isEmpty());
}

void HelpWindowTest::internalLinksResolve() {
  static const QRegularExpression hrefRe(QStringLiteral("href\\s*=\\s*\"([^\"]*)\""));
  int links = 0;
  for (const auto& page : HelpContents()) {
    const QString html = HelpPageHtml(page.file);
    for (auto it = hrefRe.globalMatch(html); it.hasNext();) {
      const QString href = it.next().captured(1);
      const QString where = page.file + " -> " + href;
      QVERIFY2(!href.contains(QLatin1Char(':')), qPrintable(where + ": not a page of the manual"));
      const QString file = href.startsWith(QLatin1Char('#')) ? page.file : href.section(QLatin1Char('#'), 0, 0);
      const QString anchor = href.section(QLatin1Char('#'), 1);
      const QString target = HelpPageHtml(file);
      QVERIFY2(!target.isEmpty(), qPrintable(where + ": no such page"));
      if (!anchor.isEmpty()) QVERIFY2(anchorsOf(target).contains(anchor), qPrintable(where + ": no such anchor"));
      ++links;
    }
  }
  QVERIFY(links > 100);
}

void HelpWindowTest::pagesAreSelfContained() {
  static const QRegularExpression external(
      QStringLiteral("<script|<link\\b|<img\\b|\\bsrc\\s*=|https?://|url\\("), QRegularExpression::CaseInsensitiveOption);
  for (const auto& page : HelpContents()) {
    const QRegularExpressionMatch m = external.match(HelpPageHtml(page.file));
    QVERIFY2(!m.hasMatch(), qPrintable(page.file + " uses " + m.captured()));
  }
}

void HelpWindowTest::searchFindsPagesByTheirText() {
  // A word that only the DIALOG filter page holds, in any case.
  QCOMPARE(hitFiles(QStringLiteral("KWIC")), QStringList{QStringLiteral("filter_dialog_all.html")});
  QCOMPARE(hitFiles(QStringLiteral("kwic")), QStringList{QStringLiteral("filter_dialog_all.html")});
  // Every word must be on the page; extra blanks don't matter.
  QCOMPARE(hitFiles(QStringLiteral("  exit   codes 130 ")).contains(QStringLiteral("command_line.html")), true);
  QVERIFY(!hitFiles(QStringLiteral("exit codes 130")).contains(QStringLiteral("settings.html")));
  QVERIFY(hitFiles(QStringLiteral("KWIC quidlane")).isEmpty());
  // Pages with the words in a row come first, then those with most of the words.
  const auto hits = SearchHelp(QStringLiteral("zero   RECORDS"));
  QVERIFY(hits.size() >= 3);
  QVERIFY(hits.first().phraseOccurrences > 0);
  for (int i = 1; i < hits.size(); ++i) {
    const auto& a = hits[i - 1];
    const auto& b = hits[i];
    QVERIFY(a.phraseOccurrences > b.phraseOccurrences ||
            (a.phraseOccurrences == b.phraseOccurrences && a.occurrences >= b.occurrences));
  }
  // The same words the other way round are nowhere in a row: the same pages, by count.
  const auto apart = SearchHelp(QStringLiteral("records zero"));
  QCOMPARE(apart.size(), hits.size());
  for (int i = 0; i < apart.size(); ++i) {
    QCOMPARE(apart[i].phraseOccurrences, 0);
    if (i > 0) QVERIFY(apart[i - 1].occurrences >= apart[i].occurrences);
  }
  // The search looks at the text a reader sees, not at the markup.
  QVERIFY(hitFiles(QStringLiteral("cellpadding")).isEmpty());
  QVERIFY(hitFiles(QStringLiteral("rsaquo")).isEmpty());
}

void HelpWindowTest::searchFindsNothingForNonsense() {
  QVERIFY(SearchHelp(QStringLiteral("xqzvjk")).isEmpty());
  QVERIFY(SearchHelp(QStringLiteral("   ")).isEmpty());
  QVERIFY(SearchHelp(QString()).isEmpty());

  HelpWindow w;
  w.search(QStringLiteral("xqzvjk"));
  QCOMPARE(w.searchResults()->count(), 1);  // the line saying nothing was found
  QCOMPARE(w.searchResults()->item(0)->flags(), Qt::NoItemFlags);
  QVERIFY(w.searchResults()->item(0)->data(zv::forms::kHelpFileRole).toString().isEmpty());
  w.search(QString());
  QCOMPARE(w.searchResults()->count(), 0);
}

void HelpWindowTest::searchHitOpensPageWithWordSelected() {
  HelpWindow w;
  w.showPage(QStringLiteral("index.html"));
  w.searchField()->setText(QStringLiteral("kwic"));  // typing runs the search
  QCOMPARE(w.searchResults()->count(), 1);
  QListWidgetItem* hit = w.searchResults()->item(0);
  QCOMPARE(hit->data(zv::forms::kHelpFileRole).toString(), QStringLiteral("filter_dialog_all.html"));

  w.show();
  QVERIFY(QTest::qWaitForWindowExposed(&w));
  const QRect rect = w.searchResults()->visualItemRect(hit);
  QTest::mouseClick(w.searchResults()->viewport(), Qt::LeftButton, {}, rect.center());
  QCOMPARE(w.currentPage(), QStringLiteral("filter_dialog_all.html"));
  const QTextCursor selected = w.browser()->textCursor();
  QCOMPARE(selected.selectedText(), QStringLiteral("KWIC"));
  // It is the first occurrence on the page, and every occurrence is marked.
  QCOMPARE(w.browser()->document()->find(QStringLiteral("kwic")).selectionStart(), selected.selectionStart());
  const int count = static_cast<int>(w.browser()->toPlainText().count(QStringLiteral("KWIC"), Qt::CaseInsensitive));
  QCOMPARE(w.browser()->extraSelections().size(), count);

  // Of several words, the first place where they stand in a row is selected,
  // although one of them occurs earlier on its own.
  w.search(QStringLiteral("processing TIME"));
  w.openHit(QStringLiteral("main_window.html"));
  QCOMPARE(w.currentPage(), QStringLiteral("main_window.html"));
  const QString text = w.browser()->toPlainText();
  QVERIFY(text.indexOf(QStringLiteral("time"), 0, Qt::CaseInsensitive) <
          text.indexOf(QStringLiteral("processing time"), 0, Qt::CaseInsensitive));
  QCOMPARE(w.browser()->textCursor().selectedText().toLower(), QStringLiteral("processing time"));

  // Leaving the page takes the marks away.
  w.showPage(QStringLiteral("index.html"));
  QVERIFY(w.browser()->extraSelections().isEmpty());
}

void HelpWindowTest::linksHistoryAndContentsStayInStep() {
  HelpWindow w;
  w.showPage(QStringLiteral("index.html"));
  QCOMPARE(w.windowTitle(), QStringLiteral("Zorvanta Help - Zorvanta Help"));
  // Follow a link as a click does: relative to the page shown.
  w.browser()->setSource(QUrl(QStringLiteral("errors.html#zero")));
  QCOMPARE(w.currentPage(), QStringLiteral("errors.html"));
  QCOMPARE(w.contentsTree()->currentItem()->data(0, zv::forms::kHelpFileRole).toString(), QStringLiteral("errors.html"));
  QVERIFY(w.browser()->isBackwardAvailable());

  w.browser()->backward();
  QCOMPARE(w.currentPage(), QStringLiteral("index.html"));
  QCOMPARE(w.contentsTree()->currentItem()->data(0, zv::forms::kHelpFileRole).toString(), QStringLiteral("index.html"));
  w.browser()->forward();
  QCOMPARE(w.currentPage(), QStringLiteral("errors.html"));

  // Choosing in the contents opens the page.
  const auto items = w.contentsTree()->findItems(QStringLiteral("Settings"), Qt::MatchExactly | Qt::MatchRecursive);
  QCOMPARE(items.size(), 1);
  w.contentsTree()->setCurrentItem(items.first());
  QCOMPARE(w.currentPage(), QStringLiteral("settings.html"));
  QCOMPARE(w.windowTitle(), QStringLiteral("Zorvanta Help - Settings"));
}

void HelpWindowTest::keysMoveFocusNavigateAndClose() {
  HelpWindow w;
  w.showPage(QStringLiteral("index.html"));
  w.showPage(QStringLiteral("keys.html"));
  w.show();
  w.activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(&w));

  QTest::keyClick(&w, Qt::Key_F, Qt::ControlModifier);
  QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(w.searchField()));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::AltModifier);
  QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(w.contentsTree()));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_S, Qt::AltModifier);
  QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(w.searchField()));

  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left, Qt::AltModifier);
  QCOMPARE(w.currentPage(), QStringLiteral("index.html"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right, Qt::AltModifier);
  QCOMPARE(w.currentPage(), QStringLiteral("keys.html"));

  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  QTRY_VERIFY(!w.isVisible());
}

void HelpWindowTest::showHelpReusesOneWindow() {
  QWidget owner;
  QVERIFY(!zv::forms::ExistingHelpWindow());
  zv::forms::ShowHelp(&owner);
  HelpWindow* first = zv::forms::ExistingHelpWindow();
  QVERIFY(first);
  QVERIFY(first->isVisible());
  QVERIFY(first->isWindow());
  QCOMPARE(first->currentPage(), QStringLiteral("index.html"));

  first->close();
  zv::forms::ShowHelp(&owner, QStringLiteral("command_line.html"));
  QCOMPARE(zv::forms::ExistingHelpWindow(), first);
  QVERIFY(first->isVisible());
  QCOMPARE(first->currentPage(), QStringLiteral("command_line.html"));
}

QTEST_MAIN(HelpWindowTest)
#include "help_window_test.moc"
