// What only the platform does: message boxes, modal and modeless forms, pop-up menus, dates.
#include <QAction>
#include <QClipboard>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QTemporaryDir>

#include "ShownForm.h"
#include "desktop/QtPlatform.h"
#include "support/Refused.h"
#include "widgets/Label.h"
#include "widgets/TextBox.h"

namespace dravik {
namespace {

QDialog* windowOf(const char* name) {
    for (QWidget* top : QApplication::topLevelWidgets())
        if (top->objectName() == QLatin1String(name) && top->isVisible()) return qobject_cast<QDialog*>(top);
    return nullptr;
}

TEST(QtPlatform, MessageBoxesShowPlainLinesAndGiveTheAnswer) {
    QtPlatform platform;
    DialogScript script;
    const auto answer = [&](MessageBox::Buttons buttons, int key) {
        script.expect("messageBox",
                      [key](QWidget& box) { QTest::keyClick(&box, static_cast<Qt::Key>(key)); });
        return platform.messageBox({"<b>A & B</b>\r\rSave changes?", "Title", buttons});
    };
    EXPECT_EQ(answer(MessageBox::Buttons::YesNo, Qt::Key_Escape), Answer::No);
    EXPECT_EQ(answer(MessageBox::Buttons::YesNoCancel, Qt::Key_Escape), Answer::Cancel);
    EXPECT_EQ(answer(MessageBox::Buttons::Ok, Qt::Key_Escape), Answer::Ok);
    EXPECT_EQ(script.messages().front(), "<b>A & B</b>\n\nSave changes?");

    script.answerOthers("Yes");
    EXPECT_EQ(platform.messageBox({"?", "", MessageBox::Buttons::YesNoCancel}), Answer::Yes);
    EXPECT_TRUE(script.problems().isEmpty());
}

TEST(QtPlatform, AModalFormReturnsWhenItIsUnloaded) {
    QtPlatform platform;
    DialogScript script;
    Form form("dlgAsk", "Ask");
    TextBox box("box");
    Button ok("ok", "OK");
    form.setLayout(column({item(box), item(ok)}));
    form.defaultButton = &ok;
    std::string story;
    form.loading.subscribe([&] { story += "load "; });
    form.activated.subscribe([&] {
        story += "activate ";
        box.setText("proposed");
        box.setFocus();
        box.select(0, 1000);
    });
    form.unloading.subscribe([&] { story += "unload "; });
    ok.click.subscribe([&] { form.unload(); });

    // Typing replaces the proposed text because the focus and the selection are where the form put them.
    script.expect("dlgAskWindow", [&](QWidget& dialog) {
        EXPECT_TRUE(
            waitUntil([&] { return qApp->focusWidget() && qApp->focusWidget()->objectName() == "box"; }));
        QTest::keyClicks(qApp->focusWidget(), "mine");
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    platform.showModal(form);
    EXPECT_EQ(box.text(), "mine");
    EXPECT_EQ(story, "load activate unload ");
    EXPECT_EQ(windowOf("dlgAskWindow"), nullptr);

    // It can come up again, and its own close button unloads it too.
    script.expect("dlgAskWindow", [](QWidget& dialog) { dialog.close(); });
    platform.showModal(form);
    EXPECT_FALSE(form.loaded());
    EXPECT_TRUE(script.problems().isEmpty());

    // A form that gives up while it loads is not shown.
    form.activated.subscribe([&] { form.unload(); });
    platform.showModal(form);
    EXPECT_FALSE(form.loaded());
}

TEST(QtPlatform, ModelessFormsComeToTheFrontCloseAndNeverOutliveTheirModel) {
    QtPlatform platform;
    auto form = std::make_unique<Form>("dlgChild", "Child");
    auto label = std::make_unique<Label>("label", "text");
    auto timer = std::make_unique<Timer>("timer", 1);
    form->setLayout(column({item(*label)}));
    form->timers = {timer.get()};
    platform.show(*form);
    platform.show(*form);
    QDialog* window = windowOf("dlgChildWindow");
    ASSERT_NE(window, nullptr);
    EXPECT_FALSE(window->isModal());
    form->setCaption("Renamed");
    EXPECT_EQ(window->windowTitle(), "Renamed");

    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_FALSE(form->loaded());
    EXPECT_EQ(windowOf("dlgChildWindow"), nullptr);

    platform.show(*form);
    ASSERT_NE(windowOf("dlgChildWindow"), nullptr);
    timer->setEnabled(true);
    // Controls first, as the members of a form's own class go.
    label.reset();
    timer.reset();
    form.reset();
    EXPECT_EQ(windowOf("dlgChildWindow"), nullptr);
    QTest::qWait(10);
}

TEST(QtPlatform, MenusAreWorkedByKeyAndFireAfterClosing) {
    QtPlatform platform;
    DialogScript script;
    Label cell("cell", "A");
    cell.setCell(true);
    ShownForm shown(column({item(cell)}));
    PopupMenu menu("mnuMain", "Main");
    menu.add("first", "&First").enabled = false;
    menu.add("break", "-");
    menu.add("second", "&Second");
    std::string picked;
    bool openWhenPicked = true;
    menu.item("first").click.subscribe([&] { picked += "first"; });
    menu.item("second").click.subscribe([&] {
        picked += "second";
        openWhenPicked = QApplication::activePopupWidget() != nullptr;
    });
    cell.mouseDown.subscribe(
        [&](const MouseEvent& event) { platform.popUpMenu(menu, cell, event.x, event.y); });

    script.expect("mnuMain", [](QWidget& popup) {
        EXPECT_FALSE(popup.findChild<QAction*>("first")->isEnabled());
        QTest::keyClick(&popup, Qt::Key_F);
        QTest::keyClick(&popup, Qt::Key_S);
    });
    QTest::keyClick(&shown.view("cell"), Qt::Key_Menu);
    EXPECT_EQ(picked, "second");
    EXPECT_FALSE(openWhenPicked);

    script.expect("mnuMain", [](QWidget& popup) { QTest::keyClick(&popup, Qt::Key_Escape); });
    QTest::keyClick(&shown.view("cell"), Qt::Key_Menu);
    EXPECT_EQ(picked, "second");
    EXPECT_TRUE(script.problems().isEmpty());
}

TEST(QtPlatform, DatesAndClipboard) {
    QtPlatform platform;
    const QTemporaryDir folder;
    const QString path = folder.filePath("font.nnd");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QDateTime date(QDate(2026, 3, 31), QTime(14, 5, 9));
    ASSERT_TRUE(file.setFileTime(date, QFileDevice::FileModificationTime));
    file.close();
    const auto text = platform.fileDateText(path.toStdString());
    EXPECT_NE(text.find(QLocale().toString(date.date(), QLocale::ShortFormat).toStdString()),
              std::string::npos);
    EXPECT_NE(text.find("05"), std::string::npos) << text;
    EXPECT_EQ(test::refusal([&] { platform.fileDateText(path.toStdString() + "x"); }), 53);
    platform.setClipboardText("a\tb\t\r\n");
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "a\tb\t\r\n");
}

}  // namespace
}  // namespace dravik
