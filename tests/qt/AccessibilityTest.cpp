// What a screen reader finds: every control that the keyboard reaches has a name, in the window and in the
// forms of the screen.
#include <QAccessible>

#include "qt/support/WindowFixture.h"

namespace dravik::test {
namespace {

// The names of what the keyboard reaches, each of which must have one.
void walk(QAccessibleInterface* one, QStringList& names) {
    if (!one || !one->isValid() || one->state().invisible) return;
    auto* widget = qobject_cast<QWidget*>(one->object());
    if (one->state().focusable && widget && widget->focusPolicy() & Qt::TabFocus) {
        names << one->text(QAccessible::Name);
        EXPECT_NE(names.back().trimmed(), "")
            << utf8(widget->objectName()) << " of a " << widget->metaObject()->className();
    }
    for (int i = 0; i < one->childCount(); ++i) walk(one->child(i), names);
}

QStringList hear(QWidget& window) {
    QStringList names;
    walk(QAccessible::queryAccessibleInterface(&window), names);
    return names;
}

using Accessibility = WindowFixture;

TEST_F(Accessibility, EveryControlThatTheKeyboardReachesHasAName) {
    window.open({DRAVIK_SOURCE_DIR "/data/parts/rendered_charset/hack_000.png", "absent.png"});
    settle();

    const QStringList graphical = hear(window);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(window.focusWidget())->state().focused);
    for (const char* name : {"Character Set", "Text or Character to Include", "Timeout", "Part image"})
        EXPECT_TRUE(graphical.contains(QLatin1String(name))) << name;
    EXPECT_FALSE(graphical.contains(QStringLiteral("Empty"))) << "the legend is no stop";
    window.model().actions.viewNumeric.trigger();
    settle();
    const QStringList numeric = hear(window);
    EXPECT_TRUE(numeric.contains("Display") && numeric.contains("Samples"));

    makeFont([](QWidget& form) { hear(form); });

    trainer.control().screen().font.txtCharSet.setText("AB");
    trainer.control().screen().overview.tlbChars.button("Array").press();
    settle();
    const auto forms = childForms();
    EXPECT_EQ(forms.size(), 1u);
    for (QWidget* form : forms) hear(*form);
}

}  // namespace
}  // namespace dravik::test
