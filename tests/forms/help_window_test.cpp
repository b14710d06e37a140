// The manual and its window: every page present and linked right, and the search.
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QScreen>
#include <QSet>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>

#include "commands/command_table.h"
#include "forms/help_window.h"
#include "forms/main_tables.h"

using namespace zv::forms;

namespace {

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

QString fileOf(const QTreeWidgetItem* item) { return item->data(0, kHelpFileRole).toString(); }

}  // namespace

class HelpWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void everyPageIsListedOnceAndLoads() {
    HelpWindow w;
    QStringList listed, inTree;
    for (const auto& page : HelpContents()) {
      listed << page.file;
      QVERIFY2(page.title != page.file, qPrintable(page.file + " has no <title>"));
      w.showPage(page.file);
      QCOMPARE(w.currentPage(), page.file);
      QCOMPARE(w.browser()->documentTitle(), page.title);
      QVERIFY2(w.browser()->toPlainText().trimmed().size() > 200, qPrintable(page.file + " is nearly empty"));
      // The shared stylesheet reached the page: its heading in the manual's blue.
      QTextBlock heading = w.browser()->document()->begin();
      while (heading.isValid() && heading.blockFormat().headingLevel() != 1) heading = heading.next();
      QVERIFY2(heading.isValid(), qPrintable(page.file + " has no heading"));
      QCOMPARE(heading.begin().fragment().charFormat().foreground().color(), QColor(0x1f, 0x3a, 0x5f));
    }
    QVERIFY(listed.size() > 10 && listed.first() == QLatin1String("index.html"));
    QStringList sorted = listed;
    sorted.sort();  // each page of the resource once, and nothing else:
    QCOMPARE(sorted, QDir(":/help").entryList({"*.html"}, QDir::Files, QDir::Name));
    // The tree shows the same pages in the same order, pages under their chapters.
    for (QTreeWidgetItemIterator it(w.contentsTree()); *it; ++it) inTree << fileOf(*it);
    QCOMPARE(inTree, listed);
    const auto* dialogAll = w.contentsTree()->findItems("DIALOG: All Types to One File", Qt::MatchRecursive).value(0);
    QCOMPARE(dialogAll && dialogAll->parent() ? fileOf(dialogAll->parent()) : QString(), "filters.html");
    QVERIFY(HelpPageHtml(QStringLiteral("no_such_page.html")).isEmpty());
    QVERIFY(HelpPageHtml(QStringLiteral("../help/index.html")).isEmpty());
  }

  void linksResolveAndPagesAreSelfContained() {
    static const QRegularExpression hrefRe(QStringLiteral("href\\s*=\\s*\"([^\"]*)\""));
    static const QRegularExpression external(QStringLiteral("<script|<link\\b|<img\\b|\\bsrc\\s*=|https?://|url\\("),
                                             QRegularExpression::CaseInsensitiveOption);
    int links = 0;
    const QString stylesheet = QStringLiteral("<link rel=\"stylesheet\" type=\"text/css\" href=\"help.css\">");
    for (const auto& page : HelpContents()) {
      QString html = HelpPageHtml(page.file);
      // The manual's one stylesheet is the only thing a page takes from elsewhere.
      QVERIFY2(html.count(stylesheet) == 1, qPrintable(page.file + " does not link help.css once"));
      html.remove(stylesheet);
      const QRegularExpressionMatch m = external.match(html);
      QVERIFY2(!m.hasMatch(), qPrintable(page.file + " uses " + m.captured()));
      for (auto it = hrefRe.globalMatch(html); it.hasNext(); ++links) {
        const QString href = it.next().captured(1), where = page.file + " -> " + href;
        QVERIFY2(!href.contains(QLatin1Char(':')), qPrintable(where + ": not a page of the manual"));
        const QString target = HelpPageHtml(href.startsWith(QLatin1Char('#')) ? page.file : href.section('#', 0, 0));
        const QString anchor = href.section(QLatin1Char('#'), 1);
        QVERIFY2(!target.isEmpty(), qPrintable(where + ": no such page"));
        QVERIFY2(anchor.isEmpty() || anchorsOf(target).contains(anchor), qPrintable(where + ": no such anchor"));
      }
    }
    QVERIFY(links > 100);
  }

  void searchFindsPagesByTheirText() {
    // A word that only the DIALOG filter page holds, in any case; nothing for nonsense.
    QCOMPARE(hitFiles(QStringLiteral("KWIC")), QStringList{QStringLiteral("filter_dialog_all.html")});
    QCOMPARE(hitFiles(QStringLiteral("kwic")), QStringList{QStringLiteral("filter_dialog_all.html")});
    for (const char* nothing : {"xqzvjk", "   ", "", "KWIC quidlane", "cellpadding", "rsaquo"})
      QVERIFY2(SearchHelp(QLatin1String(nothing)).isEmpty(), nothing);  // every word, and only the text shown
    QVERIFY(hitFiles(QStringLiteral("  exit   codes 130 ")).contains(QStringLiteral("command_line.html")));
    QVERIFY(!hitFiles(QStringLiteral("exit codes 130")).contains(QStringLiteral("settings.html")));
    // Pages with the words in a row come first, then those with most of the words.
    const auto hits = SearchHelp(QStringLiteral("zero   RECORDS"));
    QVERIFY(hits.size() >= 3 && hits.first().phraseOccurrences > 0);
    for (int i = 1; i < hits.size(); ++i)
      QVERIFY(hits[i - 1].phraseOccurrences > hits[i].phraseOccurrences ||
              (hits[i - 1].phraseOccurrences == hits[i].phraseOccurrences &&
               hits[i - 1].occurrences >= hits[i].occurrences));

    HelpWindow w;
    w.search(QStringLiteral("xqzvjk"));  // one line that says so, and opens nothing
    QVERIFY(w.searchResults()->count() == 1 && w.searchResults()->item(0)->flags() == Qt::NoItemFlags);
  }

  void searchHitOpensPageWithWordSelected() {
    HelpWindow w;
    w.showPage(QStringLiteral("index.html"));
    w.searchField()->setText(QStringLiteral("kwic"));  // typing runs the search
    QCOMPARE(w.searchResults()->count(), 1);
    QListWidget* results = w.searchResults();
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    QTest::mouseClick(results->viewport(), Qt::LeftButton, {}, results->visualItemRect(results->item(0)).center());
    QCOMPARE(w.currentPage(), QStringLiteral("filter_dialog_all.html"));
    // The first occurrence on the page is selected, and every occurrence is marked.
    const QTextCursor selected = w.browser()->textCursor();
    QCOMPARE(selected.selectedText(), QStringLiteral("KWIC"));
    QCOMPARE(w.browser()->document()->find(QStringLiteral("kwic")).selectionStart(), selected.selectionStart());
    QCOMPARE(w.browser()->extraSelections().size(),
             w.browser()->toPlainText().count(QStringLiteral("KWIC"), Qt::CaseInsensitive));

    // Of several words, the first place where they stand in a row is selected,
    // although one of them occurs earlier on its own.
    w.search(QStringLiteral("processing TIME"));
    w.openHit(QStringLiteral("main_window.html"));
    const QString text = w.browser()->toPlainText();
    QVERIFY(text.indexOf(QStringLiteral("time"), 0, Qt::CaseInsensitive) <
            text.indexOf(QStringLiteral("processing time"), 0, Qt::CaseInsensitive));
    QCOMPARE(w.browser()->textCursor().selectedText().toLower(), QStringLiteral("processing time"));
    // Leaving the page takes the marks away.
    w.showPage(QStringLiteral("index.html"));
    QVERIFY(w.browser()->extraSelections().isEmpty());
  }

  void linksKeysHistoryAndContentsStayInStep() {
    HelpWindow w;
    w.showPage(QStringLiteral("index.html"));
    // The front page's own title is the window's: not said twice.
    QCOMPARE(w.windowTitle(), QStringLiteral("Zorvanta Help"));
    w.show();
    w.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&w));
    // Follow a link as a click does: relative to the page shown.
    w.browser()->setSource(QUrl(QStringLiteral("errors.html#zero")));
    QCOMPARE(w.currentPage(), QStringLiteral("errors.html"));
    QCOMPARE(fileOf(w.contentsTree()->currentItem()), QStringLiteral("errors.html"));

    // Ctrl+F and Alt+S go to the search, Alt+C to the contents, Alt+Left and Alt+Right through the history.
    QTest::keyClick(&w, Qt::Key_F, Qt::ControlModifier);
    QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(w.searchField()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::AltModifier);
    QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(w.contentsTree()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(w.currentPage(), QStringLiteral("index.html"));
    QCOMPARE(fileOf(w.contentsTree()->currentItem()), QStringLiteral("index.html"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_S, Qt::AltModifier);
    QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(w.searchField()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(w.currentPage(), QStringLiteral("errors.html"));

    // Choosing in the contents opens the page.
    w.contentsTree()->setCurrentItem(w.contentsTree()->findItems("Settings", Qt::MatchRecursive).value(0));
    QCOMPARE(w.currentPage(), QStringLiteral("settings.html"));
    QCOMPARE(w.windowTitle(), QStringLiteral("Zorvanta Help - Settings"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QTRY_VERIFY(!w.isVisible());
  }

  void theWindowFitsTheScreen() {
    // The test platform's screen is smaller than the window's usual size.
    ShowHelp(nullptr, QStringLiteral("sift.html"));
    HelpWindow* w = ExistingHelpWindow();
    QVERIFY(w != nullptr);
    const QRect screen = w->screen()->availableGeometry();
    QVERIFY(screen.contains(w->geometry()));
    QVERIFY(w->width() >= w->minimumSizeHint().width() && w->height() >= w->minimumSizeHint().height());
    QCOMPARE(w->currentPage(), QStringLiteral("sift.html"));
    w->close();
  }

  void everyCommandWithAToolHasAPageThatSaysWhatItDoes() {
    // Rows gain their handlers as tools are added: each one's page must be a real
    // page by then, and the pages of every number the menus give must exist.
    QStringList missing;
    for (const zv::Command& command : zv::CommandTable()) {
      const QString page = HelpPageForCommand(command.number).section(QLatin1Char('#'), 0, 0);
      const QString html = HelpPageHtml(page);
      if (html.isEmpty()) missing << QString::number(command.number) + " has no page";
      if (command.handler != nullptr && html.contains(QStringLiteral("not yet available"), Qt::CaseInsensitive))
        missing << QString::number(command.number) + " " + page + " says not yet available";
    }
    for (const MenuRow& row : MenuRows())
      if (row.number != 0 && HelpPageHtml(HelpPageForCommand(row.number).section(QLatin1Char('#'), 0, 0)).isEmpty())
        missing << QString::number(row.number) + " of the menu has no page";
    QCOMPARE(missing, QStringList());
    QCOMPARE(HelpPageForCommand(1200), QStringLiteral("filter_ovid.html"));
    QCOMPARE(HelpPageForCommand(1607), QStringLiteral("sift.html#keeping"));
    QCOMPARE(HelpPageForCommand(42), QString());
    // The chapters and the front page leave availability to the tools' own pages.
    for (const char* chapter : {"index.html", "filters.html", "content.html", "polish.html"})
      QVERIFY2(!HelpPageHtml(QLatin1String(chapter)).contains(QStringLiteral("not yet available")), chapter);
  }
};

QTEST_MAIN(HelpWindowTest)
#include "help_window_test.moc"
