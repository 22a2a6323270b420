// Stories of an operator: random acts on some fonts, a crash at a random place - between two writes or in the
// middle of one -, a restart; after which everything must be as a plain model says, and every act can still
// be taken back. DRAVIK_STORIES says how many.

#include "base/FileSystem.h"
#include "engine/font/FontWorkspace.h"
#include "support/Testing.h"

namespace dravik {

using namespace engine;
using namespace tool;
namespace {

using PlainSample = std::pair<std::uint64_t, std::int32_t>;  // its serial number and its code

struct PlainFont {
    CharacterSet set;
    std::vector<PlainSample> committed;
    std::vector<PlainSample> uncommitted;
    int training = 0;  // 0 for none

    bool operator==(const PlainFont&) const = default;
    bool isEmpty() const { return set.empty() && committed.empty() && training == 0; }
};

void PrintTo(const PlainFont& font, std::ostream* out) {
    *out << testing::PrintToString(
        std::make_tuple(font.set, font.committed, font.uncommitted, font.training));
}

// Every state that the font was in, one for each act.
struct Model {
    PlainFont now;
    std::vector<PlainFont> states{{}};
    std::size_t at = 0;
    std::optional<std::size_t> saved = 0;
    PlainFont file;
    bool changedHere = false;
    bool isTouched = false;  // by a change that is one even when it comes to nothing
    // The journal's size after each step since the program started or the journal was written anew, and the
    // model without these.
    std::vector<std::pair<std::uint64_t, std::shared_ptr<const Model>>> steps;
    std::uint64_t sizeAtSave = 0;

    static Model of(const PlainFont& font) {
        Model model;
        model.now = model.file = model.states[0] = font;
        return model;
    }
    bool isUnsaved() const {
        PlainFont kept = now;
        kept.uncommitted.clear();
        return saved != at || isTouched || kept != states[at];
    }
    void endAct() {
        if (now == states[at] && !isTouched) return;
        isTouched = false;
        states.resize(at + 1);
        if (saved && *saved > at) saved.reset();
        states.push_back(now);
        ++at;
    }
    void save() {
        endAct();
        saved = at;
        file = now;
    }
    // What is there after the program has died.
    void restart() {
        now.uncommitted.clear();
        endAct();
        changedHere = false;
        steps.clear();
    }
};

SampleInputs inputsOf(std::uint64_t serial) {
    SampleInputs inputs{};
    for (std::size_t i = 0; i < tool::kFeatureCount; ++i)
        inputs[i] = static_cast<float>((serial * 7 + i * 13) % 101) / 101;
    return inputs;
}

TrainingPtr trainingOf(int number) {
    auto training = std::make_shared<Training>();
    training->characters.push_back({'A', number, {}});
    Network& network = training->network;
    network.codes = {'A'};
    network.hidden = 1;
    for (auto* column : {&network.means, &network.scales, &network.first}) column->resize(kInputCount);
    for (auto* one : {&network.firstBias, &network.second, &network.secondBias}) one->resize(1);
    return training;
}

PlainFont plain(const FontState& state) {
    PlainFont font;
    font.set = state.characterSet;
    for (const SampleKind kind : {SampleKind::Committed, SampleKind::Uncommitted})
        for (const Sample* sample : state.samples.columns(kind)->samples) {
            EXPECT_EQ(sample->inputs, inputsOf(sample->serial));
            (kind == SampleKind::Committed ? font.committed : font.uncommitted)
                .push_back({sample->serial, sample->code});
        }
    font.training = state.training->characters.empty() ? 0 : state.training->characters[0].count;
    return font;
}

// Bytes of a journal with nothing but its first entry.
constexpr std::uint64_t kBegun = 49;

class Story {
  public:
    explicit Story(unsigned seed) : random_(seed) { start(); }

    void run() {
        try {
            tellAll();
        } catch (const Failure& failure) {
            ADD_FAILURE() << failure.description();
        }
        if (testing::Test::HasFailure()) ADD_FAILURE() << told_;
    }

  private:
    void tellAll() {
        for (int act = 10 + below(20); act > 0 && !testing::Test::HasFailure(); --act) {
            if (below(8) == 0)
                restart();
            else
                doSomething();
            compare();
        }
        restart();
        walkBackAndForth();
    }
    void tell(const std::string& what) { told_ += what + "\n"; }
    int below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
    std::string anyName() { return std::string(1, static_cast<char>('a' + below(3))); }
    std::string file(const std::string& name) const { return folder_.path("Fonts/" + name + ".nnd"); }
    Model& model() { return models_.at(*current_); }

    void start() {
        fonts_ = std::make_unique<FontWorkspace>(JobFolder(folder_.path()), false);
        fonts_->endAct({}, {});  // which says that acts do not end by themselves
    }

    void note() {
        if (!current_) return;
        Model& now = model();
        const std::string journal = journalOf(file(*current_));
        std::error_code error;
        const std::uint64_t size = fileExists(journal) ? fileSize(journal, error) : 0;
        if (!now.steps.empty() && size < now.steps.back().first) now.steps.clear();
        if (size < now.sizeAtSave) now.sizeAtSave = 0;
        auto copy = std::make_shared<Model>(now);
        copy->steps.clear();
        now.steps.emplace_back(size, std::move(copy));
    }
    void make(const FontChange& change) {
        std::holds_alternative<SetTraining>(change) ? fonts_->makeAnyway(change) : fonts_->make(change);
        deleted_.reset();
        model().changedHere = true;
    }

    void include() {
        tell("include in " + *current_);
        PlainFont& font = model().now;
        AddUncommitted add;
        std::uint64_t serial = fonts_->state().samples.nextSerial();
        for (int count = 1 + below(4); count > 0; --count) {
            const std::int32_t code = 'A' + below(3);
            add.samples.push_back({serial, code, inputsOf(serial)});
            font.uncommitted.push_back({serial++, code});
        }
        make(add);
        note();
        if (below(4) == 0) {
            while (!font.uncommitted.empty()) remove(SampleKind::Uncommitted, font.uncommitted);
            return;
        }
        make(CommitUncommitted{static_cast<std::uint32_t>(font.uncommitted.size())});
        font.committed.insert(font.committed.end(), font.uncommitted.begin(), font.uncommitted.end());
        font.uncommitted.clear();
        model().isTouched = true;
        note();
    }
    void remove(SampleKind kind, std::vector<PlainSample>& list) {
        tell("delete in " + *current_);
        const int place = below(static_cast<int>(list.size()));
        make(RemoveSample{kind, static_cast<std::uint32_t>(place),
                          fonts_->state().samples.at(kind, static_cast<std::size_t>(place))});
        list.erase(list.begin() + place);
        model().isTouched |= kind == SampleKind::Committed;
        note();
    }
    void changeFont() {
        PlainFont& font = model().now;
        const int change = below(4);
        if (change < 2) return include();
        if (change == 2) {
            for (int count = below(3); count >= 0 && !font.committed.empty(); --count)
                remove(SampleKind::Committed, font.committed);
            return;
        }
        if (below(2) == 0) {
            const CharacterSet set{"A", std::string(1, static_cast<char>('B' + below(4)))};
            if (set == font.set) return;
            tell("characters of " + *current_);
            make(SetCharacters{font.set, set});
            font.set = set;
        } else {
            const int next = ++trainings_;
            tell("train " + *current_);
            make(SetTraining{fonts_->state().training, trainingOf(next), {}, {}, {}});
            font.training = next;
        }
        note();
    }
    void save() {
        tell("save " + *current_);
        const std::uint64_t before = digestOf(readFontBytes(file(*current_)));
        fonts_->save(*current_);
        model().save();
        note();
        // A journal that is cut off before this point does not know the font file.
        if (digestOf(readFontBytes(file(*current_))) != before)
            model().sizeAtSave = model().steps.back().first;
    }
    void goBackOrForth() {
        tell("go back or forth in " + *current_);
        Model& now = model();
        if (deleted_) return bringBack();
        now.endAct();
        const bool back = below(3) > 0;
        const auto act = [&] { back ? fonts_->undo() : fonts_->redo(); };
        if (back ? now.at == 0 : now.at + 1 == now.states.size()) {
            EXPECT_EQ(test::refusal(act), 5);
        } else {
            act();
            now.at += back ? -1 : 1;
            now.now = now.states[now.at];
            now.changedHere = true;
        }
        note();
    }
    void bringBack() {
        tell("bring back " + deleted_->first);
        auto [name, font] = *deleted_;
        if (models_.contains(name)) {
            EXPECT_EQ(test::refusal([&] { fonts_->undo(); }), 58) << "another has its name now";
            return;
        }
        fonts_->undo();
        font.steps.clear();
        font.sizeAtSave = 0;
        models_[name] = font;
        if (wasCurrent_) current_ = name;
        deleted_.reset();
    }
    void doSomething() {
        if (current_ && below(3) > 0) {
            changeFont();
            if (below(3) > 0) {
                tell("act ends");
                fonts_->endAct({}, {});
                model().endAct();
                note();
            }
            return;
        }
        const int act = below(current_ ? 8 : 2);
        if (act == 0) return create(anyName());
        if (act == 1) return choose(anyName());
        if (act <= 4) return goBackOrForth();
        if (act == 5) return save();
        act == 6 ? copyOrRename(anyName()) : removeFont(anyName());
    }
    void create(const std::string& name) {
        tell("create " + name);
        fonts_->create(name);
        deleted_.reset();
        leave();
        if (const auto old = models_.find(name); old != models_.end()) {
            Model& font = old->second;
            font.endAct();
            if (!font.now.isEmpty()) {
                font.now = {};
                font.isTouched = true;
                font.endAct();
            }
            font.save();
            font.steps.clear();
        } else {
            models_[name] = {};
        }
        current_ = name;
        note();
        model().sizeAtSave = model().steps.back().first;
    }
    void opened(const std::string& name) {
        left_.erase(name);
        foreign_.erase(name);
    }
    // Uncommitted samples stay behind.
    void leave() {
        if (current_) model().now.uncommitted.clear();
    }
    void choose(const std::string& name) {
        if (!models_.contains(name)) return;
        tell("choose " + name);
        fonts_->load(name);
        if (current_ != name) leave();
        current_ = name;
        model().steps.clear();
    }
    void copyOrRename(const std::string& name) {
        if (models_.contains(name)) return;
        const std::string old = *current_;
        tell("copy or rename " + old + " to " + name);
        if (below(2) == 0) {
            fonts_->duplicate(name, old);
            deleted_.reset();
            PlainFont shown = model().now;
            shown.uncommitted.clear();
            models_[name] = Model::of(shown);
            return;
        }
        fonts_->rename(name, old);
        auto entry = models_.extract(old);
        entry.key() = name;
        entry.mapped().steps.clear();
        entry.mapped().sizeAtSave = 0;
        models_.insert(std::move(entry));
        current_ = name;
    }
    void removeFont(const std::string& name) {
        if (!models_.contains(name)) return;
        tell("remove " + name);
        fonts_->remove(name);
        opened(name);
        models_.at(name).now.uncommitted.clear();
        deleted_ = {name, models_.extract(name).mapped()};
        wasCurrent_ = current_ == name;
        if (wasCurrent_) current_.reset();
        if (below(2) == 0) bringBack();
    }

    void compare() {
        if (!current_) return;
        opened(*current_);
        ASSERT_EQ(plain(fonts_->state()), model().now);
        const bool isUnsaved = model().isUnsaved();
        const auto unsaved = fonts_->unsavedFonts();
        ASSERT_EQ(std::count(unsaved.begin(), unsaved.end(), *current_), isUnsaved);
    }
    void restart() {
        const int how = below(4);
        tell("restart " + std::to_string(how));
        if (how == 0) {
            fonts_.reset();
            for (auto& [name, font] : models_)
                if (font.isUnsaved() && font.changedHere) font = Model::of(font.file);
        } else if (how == 1) {
            fonts_->keepUnsaved();
            fonts_.reset();
        } else {
            kill(how == 2);
        }
        for (auto& [name, font] : models_) {
            font.restart();
            if (font.isUnsaved()) left_.insert(name);
        }
        current_.reset();
        deleted_.reset();
        start();
        for (auto& [name, font] : models_) {
            if (below(2) == 0) continue;
            current_ = name;
            const bool wasLeft = left_.contains(name);
            fonts_->load(name);
            const auto recovered = fonts_->takeRecovered();
            ASSERT_EQ(recovered.size(), wasLeft || foreign_.contains(name));
            for (const RecoveredChanges& one : recovered) {
                EXPECT_EQ(one.font, name);
                EXPECT_EQ(one.problem.empty(), wasLeft);
            }
            compare();
        }
    }
    // As a process that is killed leaves its files, and cut off somewhere as by a power failure.
    void kill(bool cuts) {
        const auto from = folder_.path("Fonts"), kept = folder_.path("Kept");
        if (entryKind(from) == EntryKind::None) return fonts_.reset();
        std::filesystem::copy(from, kept, std::filesystem::copy_options::recursive);
        fonts_.reset();
        std::filesystem::remove_all(from);
        std::filesystem::rename(kept, from);
        if (cuts && current_ && model().steps.size() > 1) cut();
    }
    void cut() {
        Model& font = model();
        const auto first = font.steps.front().first, last = font.steps.back().first;
        const std::uint64_t size = first + random_() % (last - first + 1);
        const std::uint64_t sizeAtSave = font.sizeAtSave;
        if (last == 0) return;
        tell("cut " + *current_ + " at " + std::to_string(size) + " of " + std::to_string(last) +
             ", saved at " + std::to_string(sizeAtSave));
        std::filesystem::resize_file(journalOf(file(*current_)), size);
        if (size < sizeAtSave) {
            font = Model::of(font.file);
            if (size >= kBegun) foreign_.insert(*current_);
            return;
        }
        std::shared_ptr<const Model> there;
        for (const auto& [sizeThen, then] : font.steps)
            if (sizeThen <= size) there = then;
        const Model was = *there;
        font = was;
    }
    void walkBackAndForth() {
        for (auto& [name, font] : models_) {
            fonts_->load(name);
            current_ = name;
            compare();
            for (; font.at + 1 < font.states.size(); ++font.at) fonts_->redo();
            for (;; --font.at) {
                ASSERT_EQ(plain(fonts_->state()), font.states[font.at]) << name << " at " << font.at;
                if (font.at == 0) break;
                fonts_->undo();
            }
            EXPECT_EQ(fonts_->undoWords(), std::nullopt);
        }
    }

    std::mt19937 random_;
    std::string told_;
    const TemporaryFolder folder_;
    std::unique_ptr<FontWorkspace> fonts_;
    std::map<std::string, Model> models_;
    std::optional<std::string> current_;
    std::optional<std::pair<std::string, Model>> deleted_;
    bool wasCurrent_ = false;
    std::set<std::string> left_;     // unsaved, and not loaded since the program started
    std::set<std::string> foreign_;  // their journals do not fit them, and they have not been loaded since
    int trainings_ = 0;
};

TEST(FontStories, EverythingIsThereAfterACrash) {
    const char* asked = std::getenv("DRAVIK_STORIES");
    const int stories = asked ? std::atoi(asked) : 300;
    for (int seed = 1; seed <= stories && !HasFailure(); ++seed) {
        SCOPED_TRACE("story " + std::to_string(seed));
        Story(static_cast<unsigned>(seed)).run();
    }
}

}  // namespace
}  // namespace dravik
