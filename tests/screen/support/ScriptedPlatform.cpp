#include "screen/support/ScriptedPlatform.h"

#include "support/Testing.h"

namespace dravik::test {

ScriptedPlatform::~ScriptedPlatform() {
    EXPECT_TRUE(boxAnswers.empty()) << boxAnswers.size() << " message boxes were expected and never shown";
    EXPECT_TRUE(menuPicks.empty()) << menuPicks.size() << " menu picks were expected and never asked for";
    EXPECT_EQ(busyDepth, 0) << "the pointer was left busy";
}

Answer ScriptedPlatform::messageBox(const MessageBox& box) {
    boxes.push_back(box);
    if (asking) asking();
    if (boxAnswers.empty()) {
        ADD_FAILURE() << "unexpected message box \"" << box.title << "\": " << box.text;
        return box.buttons == MessageBox::Buttons::Ok ? Answer::Ok : Answer::No;
    }
    const auto answer = boxAnswers.front();
    boxAnswers.pop_front();
    return answer;
}

std::vector<std::string> ScriptedPlatform::told() const {
    std::vector<std::string> texts;
    for (const MessageBox& box : boxes) texts.push_back(box.title + ": " + box.text);
    return texts;
}

void ScriptedPlatform::showModal(Form& form) {
    form.activate();
    if (const auto handler = modalHandlers.find(form.name()); handler != modalHandlers.end()) {
        handler->second(form);
    } else {
        ADD_FAILURE() << "unexpected modal form " << form.name();
        form.unload();
    }
    if (!form.loaded()) return;
    ADD_FAILURE() << "modal form " << form.name() << " was left open";
    form.unload();
}

void ScriptedPlatform::show(Form& form) {
    if (std::find(open.begin(), open.end(), &form) == open.end()) {
        open.push_back(&form);
        form.unloaded.subscribe([this, &form] { std::erase(open, &form); });
        form.destroyed.subscribe([this, &form] { std::erase(open, &form); });
    }
    form.activate();
}

Form& ScriptedPlatform::opened(const std::string& name) const {
    for (auto* form : open)
        if (form->name() == name) return *form;
    throw Failure(RuntimeError::SubscriptOutOfRange, name + " is not open");
}

void ScriptedPlatform::popUpMenu(PopupMenu& menu, Widget&, double, double) {
    menus.emplace_back();
    for (const auto& item : menu.items())
        if (item->enabled && !item->isSeparator()) menus.back().push_back(item->caption);
    if (menuPicks.empty()) {
        ADD_FAILURE() << "unexpected menu " << menu.name;
        return;
    }
    const auto pick = menuPicks.front();
    menuPicks.pop_front();
    if (pick.empty()) return;
    EXPECT_TRUE(menu.item(pick).enabled)
        << "item " << pick << " of menu " << menu.name << " cannot be picked";
    menu.item(pick).click();
    if (asking) asking();
}

std::string ScriptedPlatform::fileDateText(const std::string& path) {
    if (const auto date = fileDates.find(path); date != fileDates.end()) return date->second;
    throw Failure(RuntimeError::FileNotFound);
}

void ScriptedPlatform::setBusy(bool busy) {
    busyDepth += busy ? 1 : -1;
    if (busy) ++busyTimes;
}

}  // namespace dravik::test
