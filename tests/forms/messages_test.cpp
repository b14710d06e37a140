// Message and input boxes show their whole title, however short their text.
#include <QInputDialog>
#include <QTest>

#include "forms/messages.h"
#include "forms_test_support.h"

using namespace zv::forms;

namespace {

// The title's text in a bold face, as title bars draw it, and room for an icon and a
// close button beside it.
int titleNeeds(const QString& title) {
  QFont bold = QApplication::font();
  bold.setBold(true);
  return QFontMetrics(bold).horizontalAdvance(title) + 100;
}

}  // namespace

class TestMessages : public QObject {
  Q_OBJECT

 private slots:
  void boxesAreAsWideAsTheirTitles() {
    // Titles that narrow boxes used to cut, each over a text shorter than itself.
    const struct {
      const char* title;
      const char* text;
      bool input;
    } cases[] = {
        {"Jump to Record", "Record number:", true},
        {"Reorder Records", "New position:", true},
        {"File Open Error", "File not found.", false},
        {"Zorvanta v3.0 Beta", "Error 2 executing WinExec function.", false},
        {"Command Not Available", "No.", false},
    };
    for (const auto& c : cases) {
      const QString title = QLatin1String(c.title);
      std::unique_ptr<QDialog> box;
      if (c.input)
        box = MakeInputBox(nullptr, QLatin1String(c.text), title);
      else
        box = MakeMessageBox(nullptr, MsgIcon::Warning, title, QLatin1String(c.text), QMessageBox::Ok);
      box->show();
      QApplication::processEvents();
      QCOMPARE(box->windowTitle(), title);
      QVERIFY2(box->width() >= titleNeeds(title), c.title);
      box->hide();
    }
    // A long text still widens the box past its title's need.
    const QString text(60, QLatin1Char('w'));
    const auto wide = MakeMessageBox(nullptr, MsgIcon::None, QStringLiteral("Copy Error"), text, QMessageBox::Ok);
    wide->show();
    QApplication::processEvents();
    QVERIFY(wide->width() >= wide->fontMetrics().horizontalAdvance(text));
  }
};

QTEST_MAIN(TestMessages)
#include "messages_test.moc"
