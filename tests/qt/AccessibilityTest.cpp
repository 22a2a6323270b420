// What a screen reader finds: every control that the keyboard reaches has a name, in the window and in the
// forms of the screen.
#include <QAccessible>

#include "qt/support/WindowFixture.h"

namespace dravik::test {
namespace {

struct Heard {
    QStringList nameless;  // reached by the keyboard, and nothing is said of them
    QStringList names;     // of all that is reached by the keyboard
    int focused = 0;
};

void walk(QAccessibleInterface* one, Heard& heard) {
    if (!one || !one->isValid() || one->state().invisible) return;
    const QAccessible::State state = one->state();
    auto* widget = qobject_cast<QWidget*>(one->object());
    const bool reached = state.focusable && widget && widget->focusPolicy() & Qt::TabFocus;
    const QString name = one->text(QAccessible::Name);
    if (reached) {
        heard.names << name;
        if (name.trimmed().isEmpty())
            heard.nameless << QStringLiteral("%1 (%2)").arg(one->object()->objectName(),
                                                            one->object()->metaObject()->className());
    }
    if (state.focused && reached) ++heard.focused;
    for (int i = 0; i < one->childCount(); ++i) walk(one->child(i), heard);
}

Heard hear(QWidget& window) {
    Heard heard;
    walk(QAccessible::queryAccessibleInterface(&window), heard);
    EXPECT_EQ(heard.nameless.join(", ").toStdString(), "") << window.objectName().toStdString();
    return heard;
}

using Accessibility = WindowFixture;

TEST_F(Accessibility, EveryControlThatTheKeyboardReachesHasAName) {
    window.open({DRAVIK_SOURCE_DIR "/data/parts/rendered_charset/hack_000.png", "absent.png"});
    settle();

    const Heard graphical = hear(window);
    EXPECT_EQ(graphical.focused, 1);
    for (const char* name : {"Character Set", "Text or Character to Include", "Timeout", "Part image"})
        EXPECT_TRUE(graphical.names.contains(QLatin1String(name))) << name;
    EXPECT_FALSE(graphical.names.contains(QStringLiteral("Empty"))) << "the legend is no stop";
    window.model().actions.viewNumeric.trigger();
    settle();
    const Heard numeric = hear(window);
    for (const char* name : {"Display", "Samples"})
        EXPECT_TRUE(numeric.names.contains(QLatin1String(name))) << name;

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
