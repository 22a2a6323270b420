#include "trainer/Labelling.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "base/Failure.h"
#include "base/Text.h"
#include "tool/IncludeRules.h"
#include "trainer/labels/CorrectedLabels.h"

namespace dravik::trainer {
namespace {

constexpr int kWholeText = 32767;

// What an operator does not see in what is pasted would count as a character that the image lacks.
std::string withoutUnseen(const std::string& text) {
    std::string result;
    for (const std::string& character : characters(text))
        if (character.find_first_of(" \r\n\t") != 0 && !isInvisible(codeOf(character))) result += character;
    return result;
}

}  // namespace

Labelling::Labelling(const Around& around, std::string labelsFile)
    : around_(around), book_(std::move(labelsFile)) {
    auto& sample = around_.control.screen().sample;
    sample.txtSampleInput.pasteFilter = withoutUnseen;
    // Where the box loses its selection with the focus, typing is to replace the text all the same.
    connections_.push_back(sample.txtSampleInput.gotFocus.connect([this] {
        if (!isTyped_ && pointedAt_ < 0 && !typed().empty()) box().select(0, kWholeText);
    }));
    sample.cmdInclude.mayPress = [this] { return mayInclude(); };
    // These come after the screen's own procedures, which subscribed first.
    connections_.push_back(sample.txtSampleInput.textChanged.connect([this] { textEdited(); }));
    connections_.push_back(sample.cmdInclude.click.connect([this] { includeEnded(); }));
    connections_.push_back(around_.control.actEnded().connect([this](const screen::OperatorAct& act) {
        if (act.kind == screen::OperatorAct::Kind::Include && !act.characters.empty()) hasIncluded_ = true;
        fontMayHaveChanged();
    }));
    connections_.push_back(around_.acts.moving.connect([this] {
        before_.emplace(
            around_.tool.currentFont().value_or(""),
            around_.tool.currentFont() ? around_.tool.samples(tool::SampleKind::Committed) : nullptr);
    }));
    connections_.push_back(around_.acts.moved.connect([this] {
        samplesFollowed();
        fontMayHaveChanged();
    }));
    connections_.push_back(around_.control.fontStateChanged.connect([this] { fontMayHaveChanged(); }));
    connections_.push_back(keepTimer_.tick.connect([this] { labelsKept(); }));
    for (const std::string& image : book_.images()) format_.add(*book_.text(image));
}

Labelling::~Labelling() {
    auto& sample = around_.control.screen().sample;
    sample.cmdInclude.mayPress = nullptr;
    sample.txtSampleInput.pasteFilter = nullptr;
    try {
        while (keeping_.deliver(std::chrono::seconds(10))) continue;
        if (book_.isChanged()) book_.keepingWork()();
    } catch (...) {
        return;  // it was said when it was tried before
    }
}

ui::TextBox& Labelling::box() const {
    return around_.control.screen().sample.txtSampleInput;
}

// The text as an include takes it.
std::string Labelling::typed() const {
    return tool::textToInclude(box().text());
}

std::size_t Labelling::leadingBlanks() const {
    const std::size_t first = box().text().find_first_not_of(' ');
    return first == std::string::npos ? 0 : first;
}

// What the screen says in its status line of a text that nobody has typed would cover what it said before.
void Labelling::showText(const std::string& text) {
    ui::StatusPanel& message = around_.control.screen().sbr.panel("Message");
    const std::string before = message.text();
    showing_ = true;
    box().setText(text);
    showing_ = false;
    message.setText(before);
    if (!text.empty()) box().select(0, kWholeText);
}

void Labelling::imageComesUp() {
    const OpenedParts& parts = around_.parts;
    const std::string path = parts.current() < 0 ? std::string() : parts.path(parts.current());
    const bool fails = !path.empty() && !parts.isDecoding() && !parts.problem().empty();
    if (fails && failed_.insert(path).second) statesChanged();
    if (path == path_) return;
    if (isTyped_ && !path_.empty()) {
        if (typed().empty())
            drafts_.erase(path_);
        else
            drafts_[path_] = typed();
    }
    path_ = path;
    candidates_.clear();
    text_.clear();
    pointedAt_ = -1;
    isTyped_ = false;
    showOwnText();
}

void Labelling::showOwnText() {
    showKnownText();
    if (!path_.empty()) textWanted();
}

// The text that the operator has given to the image, else none.
void Labelling::showKnownText() {
    const auto draft = drafts_.find(path_);
    isOwn_ = true;
    if (keepsText_ && !typed().empty())
        text_.setKnown(typed());
    else if (const auto known = draft != drafts_.end() ? std::optional(draft->second) : book_.text(path_)) {
        text_.setKnown(*known);
        showText(*known);
    } else {
        isOwn_ = false;
        text_.setKnown("");
        showText("");
    }
    changed();
}

void Labelling::propose(std::vector<engine::CharacterCandidates> candidates) {
    candidates_ = std::move(candidates);
    if (isOwn_ || path_.empty()) return changed();
    text_.setProposal(trainer::propose(candidates_, format_));
    if (box().text() != text_.proposal()) {
        pointedAt_ = -1;
        showText(text_.proposal());
    }
    setState(path_, text_.nextDoubt() ? PartState::Doubtful : PartState::New);
    changed();
    textWanted();
}

void Labelling::textEdited() {
    if (showing_) return;
    isOwn_ = isTyped_ = true;
    if (std::exchange(pointedAt_, -1) >= 0) around_.acts.say("");  // what was said of it is over
    text_.setTyped(typed());
    changed();
}

std::string Labelling::doubt(std::size_t place) const {
    return text_.isDoubtful(place) ? text_.characters()[place].doubt : std::string();
}

std::size_t Labelling::doubts() const {
    std::size_t count = 0;
    for (std::size_t place = 0; place < text_.text().size(); ++place) count += text_.isDoubtful(place);
    return count;
}

const IncludedImages& Labelling::included() const {
    if (std::exchange(isIncludedStale_, false))
        included_ = around_.tool.currentFont()
                        ? IncludedImages(*around_.tool.samples(tool::SampleKind::Committed))
                        : IncludedImages();
    return included_;
}

void Labelling::fontMayHaveChanged() {
    isIncludedStale_ = true;
    statesChanged();
}

// A sample that is labelled anew, or is what it was again, has its image labelled so, too.
void Labelling::samplesFollowed() {
    const auto before = std::exchange(before_, std::nullopt);
    if (!before || !before->second || around_.tool.currentFont() != before->first) return;
    for (const CorrectedLabel& one :
         correctedLabels(*before->second, *around_.tool.samples(tool::SampleKind::Committed),
                         [this](const std::string& image) { return book_.text(image); }))
        setLabel(one.image, one.text);
}

void Labelling::setLabel(const std::string& path, const std::string& text) {
    book_.set(path, text);
    format_.add(text);
    drafts_.erase(path);
    if (path == path_) {
        isTyped_ = false;
        if (typed() != text) showKnownText();
    }
    keepLabels();
}

PartState Labelling::state(const std::string& path) const {
    if (included().has(path)) return PartState::Included;
    if (failed_.contains(path)) return PartState::Failed;
    const auto found = states_.find(forFont(path));
    return found == states_.end() ? PartState::New : found->second;
}

std::pair<std::string, std::string> Labelling::forFont(const std::string& path) const {
    return {around_.tool.currentFont().value_or(""), path};
}

void Labelling::setState(const std::string& path, PartState state) {
    const bool isOther = std::exchange(states_[forFont(path)], state) != state;
    if (failed_.erase(path) > 0 || isOther) statesChanged();
}

void Labelling::pointAt(std::size_t place, const std::string& why) {
    pointedAt_ = static_cast<int>(place);
    box().setFocus();
    box().select(static_cast<int>(place + leadingBlanks()), 1);
    around_.acts.say(why);
    changed();
}

bool Labelling::mayInclude() {
    if (isUnasked_) return true;
    OpenedParts& parts = around_.parts;
    if (parts.current() < 0) return true;
    if (!parts.isDecoding() && !parts.problem().empty()) {
        advance();
        return false;
    }
    try {
        if (beforeInclude) beforeInclude();
        // The screen itself says what is wrong with no text, or one of another length.
        if (typed().empty() || characterCount(typed()) != around_.tool.found().size()) return true;
        return !leadsToDoubt() && !isIncludedUnwanted() && !isContradicted();
    } catch (...) {
        around_.control.tellFailure("Include", currentFailure());
        return false;
    }
}

bool Labelling::leadsToDoubt() {
    if (pointedAt_ >= 0) text_.accept(static_cast<std::size_t>(pointedAt_));
    pointedAt_ = -1;
    const auto next = text_.nextDoubt();
    if (next)
        pointAt(*next, ordinal(*next) + " character: " + text_.characters()[*next].doubt +
                           ". Enter takes it, typing replaces it");
    else
        changed();
    return next.has_value();
}

bool Labelling::isIncludedUnwanted() {
    const std::string before = included().same(path_, digest_);
    if (before.empty()) return false;
    const std::string what = before == path_ ? "This image" : "An image that shows the same, " + before + ",";
    IncludeQuestion question(what, around_.control.selectedFont());
    around_.platform.showModal(question);
    // A text that was corrected, not one of another image.
    if (!question.includes() && before == path_ && book_.text(path_) != typed() && contradictions().empty()) {
        setLabel(path_, typed());
        around_.acts.say("The label of " + around_.parts.name(around_.parts.current()) + " is " + typed() +
                         " now; its samples are as they were");
    }
    return !question.includes();
}

std::vector<Contradiction> Labelling::contradictions() const {
    const std::vector<engine::CharacterLikelihood> said = around_.tool.compare(typed());
    std::vector<Contradiction> found;
    // They may still be those of characters that were found before.
    const bool hasCandidates = candidates_.size() == said.size();
    for (std::size_t i = 0; i < said.size(); ++i) {
        if (hasCandidates ? !engine::contradicts(candidates_[i], said[i]) : !said[i].disagrees()) continue;
        found.push_back({i, said[i].expected,
                         hasCandidates && !said[i].disagrees() ? candidates_[i].best().character
                                                               : said[i].likeliest.character});
    }
    return found;
}

bool Labelling::isContradicted() {
    const std::vector<Contradiction> found = contradictions();
    if (found.empty()) return false;
    pointAt(found.front().place, contradictionText(found.front()));
    IncludeQuestion question(found);
    around_.platform.showModal(question);
    if (!question.includes()) return true;
    pointedAt_ = -1;
    return false;
}

std::string Labelling::includeUnasked() {
    if (beforeInclude) beforeInclude();
    const std::size_t found = around_.tool.found().size(), has = characterCount(typed());
    if (path_.empty() || !around_.parts.problem().empty()) return around_.parts.problem();
    if (typed().empty()) return "no text";
    if (has != found)
        return std::to_string(found) + (found == 1 ? " character" : " characters") + " found, " +
               std::to_string(has) + " in the text";
    if (const std::string same = included().same(path_, digest_); !same.empty())
        return "included already, as " + same;
    if (const auto wrong = contradictions(); !wrong.empty()) return contradictionText(wrong.front());
    isUnasked_ = true;
    around_.control.screen().sample.cmdInclude.press();
    isUnasked_ = false;
    if (state(path_) == PartState::Included) return {};
    return around_.control.screen().sbr.panel("Message").text();
}

void Labelling::includeEnded() {
    if (path_.empty()) return;
    const std::string path = path_, text = typed();
    if (!std::exchange(hasIncluded_, false)) {
        if (text.empty() || state(path) == PartState::Included) return;
        setState(path, PartState::Refused);
        const std::string& failure = around_.acts.failure();
        around_.acts.say(around_.parts.name(around_.parts.current()) + " is not included" +
                         (failure.empty() ? "" : ": " + failure));
        return;
    }
    isOwn_ = true;
    setLabel(path, text);
    states_.erase(forFont(path));
    const std::string said = "Included " + around_.parts.name(around_.parts.current()) + ": " + text;
    const Left left = isUnasked_ ? Left::Several : advance();
    around_.acts.say(left == Left::None  ? said + " \u2013 every image is included"
                     : left == Left::One ? said + " \u2013 this is the last image that is not included"
                                         : said);
    statesChanged();
}

// To the next image that is to be included, from the start again behind the last one.
Labelling::Left Labelling::advance() {
    OpenedParts& parts = around_.parts;
    int next = -1;
    for (int step = 1; step < parts.count(); ++step) {
        const int index = (parts.current() + step) % parts.count();
        const PartState state = this->state(parts.path(index));
        if (state == PartState::Included || state == PartState::Failed) continue;
        if (next >= 0) {
            parts.setCurrent(next);
            return Left::Several;
        }
        next = index;
    }
    if (next < 0) return Left::None;
    parts.setCurrent(next);
    return Left::One;
}

std::size_t Labelling::openLabels(const std::string& list) {
    const std::size_t count = book_.open(list);
    for (const std::string& image : book_.images()) format_.add(*book_.text(image));
    if (!isTyped_ && !path_.empty() && book_.text(path_)) showOwnText();
    keepLabels();
    return count;
}

void Labelling::keepLabels() {
    if (!book_.isChanged()) return;
    keeping_.start([this, write = book_.keepingWork(), version = book_.version()](const std::stop_token&) {
        write();
        return [this, version] { book_.kept(version); };
    });
    keepTimer_.setEnabled(true);
}

void Labelling::labelsKept() {
    try {
        keeping_.deliver(std::chrono::milliseconds(0));
    } catch (...) {
        around_.acts.say("The labels could not be kept: " + currentFailure().description());
    }
    keepTimer_.setEnabled(keeping_.busy());
}

}  // namespace dravik::trainer
