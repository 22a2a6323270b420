// The three kinds of native buttons.

#include <algorithm>

#include "windows/win32/Page.h"
#include "windows/win32/Peers.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {
namespace {

constexpr int kLeastButtonWidth = 80;
constexpr int kButtonPadding = 22;
constexpr int kLeastButtonHeight = 23;
constexpr int kCheckGap = 6;

// What push buttons, check boxes and option buttons have in common.
template <class Model>
class ButtonPeerOf : public PeerOf<Model> {
  public:
    using PeerOf<Model>::PeerOf;

    bool takesFocus() const override { return true; }
    wchar_t mnemonic() const override { return mnemonicOf(wide(this->model_.shownCaption())); }
    void command(WORD code, WORD) override {
        if (code == BN_CLICKED) this->act([this] { pressed(); });
    }
    void pressMnemonic() override {
        const auto self = this->shared_from_this();
        this->focus();
        this->act([this] { pressed(); });
    }

  protected:
    // What a click makes of the model.
    virtual void pressed() = 0;
    HWND makeButton(HWND parent, DWORD style) {
        return this->makeWindow(WC_BUTTONW, parent, WS_TABSTOP | style, 0, wide(this->model_.shownCaption()));
    }
    void show(ui::Change change) override {
        if (change == ui::Change::Caption)
            showCaption();
        else
            Peer::show(change);
    }
    SIZE captionSize() const {
        return this->look().textSize(this->wantedFont(), withoutMnemonic(wide(this->model_.shownCaption())));
    }
    void showCaption() {
        this->showText(wide(this->model_.shownCaption()));
        this->sizeChanged();
    }
};

class ButtonPeer : public ButtonPeerOf<ui::Button> {
  public:
    using ButtonPeerOf::ButtonPeerOf;

    bool pressEnter() override {
        act([this] { pressed(); });
        return true;
    }

  protected:
    void pressed() override { model_.press(); }
    HWND make(HWND parent) override { return makeButton(parent, BS_PUSHBUTTON | BS_NOTIFY); }

    ui::Measure ask() override {
        const SIZE text = captionSize();
        const int height = std::max<int>(text.cy + look().px(8), look().px(kLeastButtonHeight));
        const int width = std::max<int>(text.cx + look().px(kButtonPadding), look().px(kLeastButtonWidth));
        return {{text.cx + look().px(kButtonPadding / 2), height}, {width, height}, true, true, false, false};
    }
};

// A box or a circle before the caption.
template <class Model>
class MarkedPeerOf : public ButtonPeerOf<Model> {
  public:
    using ButtonPeerOf<Model>::ButtonPeerOf;

  protected:
    ui::Measure ask() override {
        const SIZE text = this->captionSize();
        const int width = text.cx + this->look().px(13 + 2 * kCheckGap);
        const int height = std::max<int>(text.cy + this->look().px(4), this->look().px(19));
        return {{width, height}, {width, height}, true, true, false, false};
    }
    virtual bool isMarked() const = 0;
    void show(ui::Change change) override {
        if (change == ui::Change::Value)
            SendMessageW(this->window(), BM_SETCHECK, isMarked() ? BST_CHECKED : BST_UNCHECKED, 0);
        else
            ButtonPeerOf<Model>::show(change);
    }
};

class CheckBoxPeer : public MarkedPeerOf<ui::CheckBox> {
  public:
    using MarkedPeerOf::MarkedPeerOf;

  protected:
    void pressed() override { model_.setChecked(!model_.checked()); }
    bool isMarked() const override { return model_.checked(); }
    HWND make(HWND parent) override { return makeButton(parent, BS_CHECKBOX); }
};

// The options that stand in one container are one stop of the Tab key; arrow keys choose among them.
class OptionButtonPeer : public MarkedPeerOf<ui::OptionButton> {
  public:
    using MarkedPeerOf::MarkedPeerOf;

    bool isTabStop() const override {
        const std::vector<Peer*> group = options();
        const auto chosen = std::find_if(group.begin(), group.end(), isChosen);
        return (chosen == group.end() ? group.front() : *chosen) == this;
    }

  protected:
    void pressed() override { model_.setChosen(true); }
    bool isMarked() const override { return model_.chosen(); }
    HWND make(HWND parent) override { return makeButton(parent, BS_RADIOBUTTON); }

    LRESULT message(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_GETDLGCODE) return DLGC_BUTTON | DLGC_WANTARROWS;
        if (message == WM_KEYDOWN) {
            const bool back = wParam == VK_LEFT || wParam == VK_UP;
            if (back || wParam == VK_RIGHT || wParam == VK_DOWN) {
                chooseNeighbour(back);
                return 0;
            }
        }
        return Peer::message(message, wParam, lParam);
    }

  private:
    static bool isChosen(const Peer* peer) {
        return static_cast<const ui::OptionButton&>(peer->model()).chosen();
    }

    std::vector<Peer*> options() const {
        std::vector<Peer*> group;
        for (const auto& peer : page().peers())
            if (peer->attached() && peer->model().kind() == ui::WidgetKind::OptionButton &&
                peer->container() == container() && (peer->isUsable() || peer.get() == this))
                group.push_back(peer.get());
        return group;
    }

    void chooseNeighbour(bool back) {
        const std::vector<Peer*> group = options();
        const auto own =
            static_cast<std::size_t>(std::find(group.begin(), group.end(), this) - group.begin());
        const std::size_t next = (own + (back ? group.size() - 1 : 1)) % group.size();
        const auto other = group[next]->shared_from_this();
        other->focus();
        if (other->attached())
            guarded([&] { static_cast<ui::OptionButton&>(other->model()).setChosen(true); });
    }
};

}  // namespace

std::shared_ptr<Peer> make(ui::Button& model, Page& page) {
    return std::make_shared<ButtonPeer>(model, page);
}

std::shared_ptr<Peer> make(ui::CheckBox& model, Page& page) {
    return std::make_shared<CheckBoxPeer>(model, page);
}

std::shared_ptr<Peer> make(ui::OptionButton& model, Page& page) {
    return std::make_shared<OptionButtonPeer>(model, page);
}

}  // namespace dravik::win32
