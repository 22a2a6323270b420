// What is not saved: it can be taken back and done again, outlives the program, and belongs to one at a time.

#include "base/AtomicFile.h"
#include "base/FileSystem.h"
#include "engine/ToolActs.h"
#include "engine/font/FontFile.h"
#include "engine/font/Journal.h"
#include "support/Testing.h"
#include "tool/Samples.h"

namespace dravik {

using namespace tool;
namespace {

using test::failureOfAction;
using test::refusal;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class UnsavedWork : public testing::Test {
  protected:
    std::unique_ptr<EmbeddedTool> start() const {
        return std::make_unique<EmbeddedTool>(JobFolder(folder.path()));
    }
    // Another program takes the place of the one there was.
    void restart(std::unique_ptr<EmbeddedTool>& tool, const std::string& font) const {
        tool = start();
        tool->LoadFont(font);
    }
    // As a process that is killed leaves its fonts: what was written stays, nothing is tidied up.
    void kill(std::unique_ptr<EmbeddedTool> tool) const {
        std::filesystem::copy(folder.path("Fonts"), folder.path("Kept"),
                              std::filesystem::copy_options::recursive);
        tool.reset();
        std::filesystem::remove_all(folder.path("Fonts"));
        std::filesystem::rename(folder.path("Kept"), folder.path("Fonts"));
    }
    void killAndRestart(std::unique_ptr<EmbeddedTool>& tool, const std::string& font) const {
        kill(std::move(tool));
        restart(tool, font);
    }
    std::string font(const std::string& name) const { return folder.path("Fonts/" + name + ".nnd"); }

    const TemporaryFolder folder;
};

TEST_F(UnsavedWork, ActsAreTakenBackAndDoneAgainWithTheScreenThatBelongsToThem) {
    auto tool = start();
    tool->CreateFont("f");
    tool->endAct("", "empty");
    EXPECT_EQ(tool->undoWords(), std::nullopt);
    EXPECT_EQ(refusal([&] { tool->undo(); }), 5);

    tool->SetCharacterSet({"A", "B", "H"});
    teach(*tool, "ABH");
    tool->endAct("", "three");
    EXPECT_EQ(tool->undoWords(), "inclusion of 3 samples");
    tool->DeleteSample(300001);
    tool->endAct("", "two");
    EXPECT_EQ(tool->undoWords(), "deletion of 1 sample of B");
    train(*tool);
    tool->endAct("learning", "trained");
    tool->SaveFont("f");
    EXPECT_THAT(tool->unsavedFonts(), IsEmpty());
    tool->RevertFont("f");  // to just that
    tool->SetCharacterSet({"A"});

    EXPECT_EQ(tool->undo(), "trained") << "what goes on is an act of its own";
    EXPECT_EQ(tool->redoWords(), "change of the character set");
    EXPECT_EQ(tool->undo(), "two");
    EXPECT_FALSE(tool->isTrained());
    EXPECT_THAT(tool->unsavedFonts(), ElementsAre("f")) << "saving is no border";
    EXPECT_EQ(tool->undo(), "three");
    EXPECT_EQ(labels(*tool), "ABH");
    EXPECT_EQ(tool->undo(), "empty");
    EXPECT_EQ(labels(*tool), "");
    EXPECT_THAT(tool->GetUncommittedSamples(), IsEmpty());
    EXPECT_THAT(tool->GetCharacterSet(), IsEmpty());
    for (const char* state : {"three", "two", "trained"}) EXPECT_EQ(tool->redo(), state);
    EXPECT_EQ(labels(*tool), "AH");
    EXPECT_TRUE(tool->isTrained());
    EXPECT_THAT(tool->unsavedFonts(), IsEmpty());

    // A refused include is no act; what comes after an undo takes the place of what was undone.
    tool->IncludeSamples("ABH");
    for (int i = 2; i >= 0; --i) tool->DeleteSample(sampleIdentifier(SampleKind::Uncommitted, i));
    tool->endAct("", "trained");
    EXPECT_EQ(tool->redoWords(), "change of the character set");
    EXPECT_THAT(tool->unsavedFonts(), IsEmpty());
    teach(*tool, "HH");
    tool->endAct("", "more");
    EXPECT_EQ(tool->redoWords(), std::nullopt);
    EXPECT_EQ(labels(*tool), "AHHH");
    EXPECT_EQ(tool->undo(), "trained");
    EXPECT_EQ(labels(*tool), "AH");
}

TEST_F(UnsavedWork, WhatAKilledProgramLeftIsThereAndCanStillBeTakenBack) {
    auto tool = start();
    tool->CreateFont("a");
    tool->CreateFont("b");
    tool->endAct("", "");
    tool->LoadFont("a");
    teach(*tool, "AB");
    tool->endAct("", "a with two");
    tool->LoadFont("b");
    teach(*tool, "HTL");
    tool->endAct("", "");
    tool->DeleteSample(300000);
    tool->setImage(drawn({"AB"}));
    tool->IncludeSamples("AB");  // and not committed
    EXPECT_THAT(tool->unsavedFonts(), ElementsAre("a", "b"));
    killAndRestart(tool, "b");
    EXPECT_EQ(labels(*tool), "TL");
    EXPECT_THAT(tool->GetUncommittedSamples(), IsEmpty()) << "half an include";
    auto told = tool->takeRecovered();
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told[0].font, "b");
    EXPECT_EQ(told[0].acts, 2);
    EXPECT_LT(std::chrono::system_clock::now() - told[0].first, std::chrono::minutes(1));
    EXPECT_THAT(tool->takeRecovered(), IsEmpty());
    tool->LoadFont("a");
    EXPECT_EQ(labels(*tool), "AB");
    EXPECT_EQ(tool->undoWords(), "inclusion of 2 samples");
    tool->undo();
    EXPECT_EQ(tool->redo(), "a with two");
    tool->SaveFont("a");
    EXPECT_THAT(tool->unsavedFonts(), ElementsAre("b"));

    // Nobody went on with b, so that it stays for the next one; a is saved and can be taken back.
    restart(tool, "a");
    EXPECT_THAT(tool->takeRecovered(), IsEmpty());
    EXPECT_EQ(tool->undoWords(), "inclusion of 2 samples");
    tool->LoadFont("b");
    EXPECT_EQ(labels(*tool), "TL");
    tool->discardUnsaved("b");
    EXPECT_EQ(labels(*tool), "");
    ASSERT_EQ(tool->versions("b").size(), 1u);
    EXPECT_EQ(tool->versions("b")[0].kind, FontVersion::Kind::Discarded);
    tool->restoreVersion(tool->versions("b")[0], "b");
    EXPECT_EQ(labels(*tool), "TL");
    tool->undo();
    EXPECT_EQ(labels(*tool), "") << "restoring is an act";
}

TEST_F(UnsavedWork, WhatIsLetGoWithoutSavingIsOfferedAndNotMadeAgain) {
    auto tool = start();
    tool->CreateFont("f");
    teach(*tool, "AB");
    restart(tool, "f");
    EXPECT_EQ(labels(*tool), "");
    EXPECT_THAT(tool->takeRecovered(), IsEmpty());
    ASSERT_EQ(tool->versions("f").size(), 1u);
    EXPECT_EQ(tool->versions("f")[0].samples, 2);
}

// Where samples come from goes with them through all that can become of a font, and so does another label.
TEST_F(UnsavedWork, SamplesKeepTheirPicturesAndCanBeRelabelled) {
    auto tool = start();
    tool->CreateFont("f");
    tool->SetCharacterSet({"A", "B", "H"});
    tool->endAct("", "");
    tool->setImage(drawn({"ABH"}));
    tool->setImageName("parts/1.png");
    tool->IncludeSamples("ABB");
    tool->CommitNewSamples();
    tool->endAct("", "");
    teach(*tool, "ABH");  // of an image without a name
    tool->endAct("", "");
    const auto seen = [&tool](std::size_t i) { return tool->samples(SampleKind::Committed)->samples[i]; };
    ASSERT_TRUE(seen(2)->origin);
    EXPECT_EQ(seen(2)->origin->image->name, "parts/1.png");
    EXPECT_EQ(seen(2)->origin->box.left, tool->found()[2].left);
    EXPECT_FALSE(seen(3)->origin->image);
    EXPECT_GT(tool->samples(SampleKind::Committed)->distances[2], 0.5) << "an H that is labelled B";
    const SmallPicture picture = seen(2)->origin->picture;
    ASSERT_FALSE(picture.empty());

    const auto shown = tool->samples(SampleKind::Committed);
    tool->relabelSamples(std::vector<std::int32_t>{300002, 300005}, "H");
    EXPECT_EQ(labels(*tool), "ABHABH");
    EXPECT_LT(tool->samples(SampleKind::Committed)->distances[2], 0.5);
    EXPECT_EQ(shown->samples[2]->code, 'B') << "a list that was asked for before";
    tool->relabelSamples(std::vector<std::int32_t>{300000, 300001}, "T");
    tool->endAct("", "");
    EXPECT_EQ(tool->undoWords(), "relabelling of 3 samples as T");
    EXPECT_THAT(tool->GetCharacterSet(), ElementsAre("A", "B", "H", "T"));
    tool->deleteSamples(std::vector<std::int32_t>{300004, 300000, 300002});
    tool->endAct("", "");
    EXPECT_EQ(labels(*tool), "TAH");
    EXPECT_EQ(tool->undoWords(), "deletion of 3 samples");
    EXPECT_EQ(refusal([&] { tool->deleteSamples(std::vector<std::int32_t>{300000, 300003}); }), 5);
    EXPECT_EQ(refusal([&] { tool->relabelSamples(std::vector<std::int32_t>{300000}, "AB"); }), 5);
    killAndRestart(tool, "f");
    EXPECT_EQ(labels(*tool), "TAH");
    tool->undo();
    EXPECT_EQ(labels(*tool), "TTHABH");
    EXPECT_EQ(seen(2)->origin->picture, picture);
    EXPECT_EQ(seen(2)->origin->image->name, "parts/1.png");
    tool->undo();
    EXPECT_EQ(labels(*tool), "ABBABH");
    EXPECT_GT(tool->samples(SampleKind::Committed)->distances[2], 0.5);
    tool->redo();
    tool->SaveFont("f");
    restart(tool, "f");
    EXPECT_EQ(labels(*tool), "TTHABH");
    EXPECT_EQ(seen(2)->origin->picture, picture);
}

// An earlier program's journal is gone on from in a form that it will not take for its own.
TEST_F(UnsavedWork, TheJournalOfAnEarlierProgramIsGoneOnFrom) {
    const auto version = [&](std::optional<char> set) {
        std::fstream file(toPath(journalOf(font("f"))), std::ios::in | std::ios::out | std::ios::binary);
        if (set) file.seekp(8).put(*set);
        return file.seekg(8).get();
    };
    auto tool = start();
    tool->CreateFont("f");
    tool->SetCharacterSet({"A"});
    tool->endAct("", "");
    kill(std::move(tool));
    EXPECT_EQ(version('\1'), 1);
    restart(tool, "f");
    teach(*tool, "H");
    tool->endAct("", "");
    EXPECT_EQ(version({}), 2);
    killAndRestart(tool, "f");
    EXPECT_EQ(labels(*tool), "H");
    tool->undo();
    EXPECT_EQ(labels(*tool), "");
    EXPECT_THAT(tool->GetCharacterSet(), ElementsAre("A"));
}

TEST_F(UnsavedWork, OneAtATimeChangesAFont) {
    auto one = start();
    auto other = start();
    one->CreateFont("f");
    one->endAct("", "");
    other->LoadFont("f");
    teach(*one, "AB");
    other->setImage(drawn({"H"}));
    const auto refused = [&](const auto& act) {
        const Failure failure = failureOfAction(act);
        EXPECT_EQ(failure.number(), 70);
        EXPECT_THAT(failure.description(), HasSubstr("is being changed by process"));
    };
    refused([&] { other->IncludeSamples("H"); });
    refused([&] { other->SetCharacterSet({"H"}); });
    refused([&] { other->RenameFont("g", "f"); });
    refused([&] { other->DeleteFont("f"); });
    refused([&] { other->CreateFont("f"); });
    EXPECT_EQ(labels(*other), "");
    EXPECT_THAT(other->GetUncommittedSamples(), IsEmpty());
    other->LoadFont("f");
    EXPECT_EQ(labels(*other), "") << "another's unsaved changes are not to be seen";

    // What was loaded before the other one saved is not what would be changed.
    one->SaveFont("f");
    EXPECT_EQ(refusal([&] { other->IncludeSamples("H"); }), 75);
    other->LoadFont("f");
    teach(*other, "H");
    EXPECT_EQ(labels(*other), "ABH");
    refused([&] { one->DeleteSample(300000); });
    other->undo();
    other->SaveFont("f");
    other.reset();
    one->LoadFont("f");
    one->DeleteSample(300000);
    EXPECT_EQ(labels(*one), "B");
    one->undo();
    EXPECT_EQ(one->undoWords(), "inclusion of 2 samples");
    one->DeleteSample(300001);  // unsaved
    one->RevertFont("f");
    EXPECT_EQ(labels(*one), "A") << "reverting is about the training";
}

TEST_F(UnsavedWork, AFontThatWasChangedUnderneathIsNotOverwritten) {
    auto tool = start();
    tool->CreateFont("f");
    tool->CreateFont("theirs");
    teach(*tool, "H");
    tool->SaveFont("theirs");
    tool->LoadFont("f");
    teach(*tool, "AB");
    const auto theirs = readWholeFile(font("theirs"), 1 << 20);
    std::ofstream(toPath(font("f")), std::ios::binary)
        .write(reinterpret_cast<const char*>(theirs.data()), static_cast<std::streamsize>(theirs.size()));
    const Failure failure = failureOfAction([&] { tool->SaveFont("f"); });
    EXPECT_EQ(failure.number(), 75);
    EXPECT_EQ(readWholeFile(font("f"), 1 << 20), theirs);
    std::string beside;
    for (const std::string& name : tool->GetFontList())
        if (name != "f" && name != "theirs") beside = name;
    EXPECT_THAT(failure.description(), HasSubstr('"' + beside + '"'));
    EXPECT_EQ(readFont(font(beside)).samples.size(), 2u);

    // Whoever is killed then finds his changes among the versions, and is told.
    killAndRestart(tool, "f");
    EXPECT_EQ(labels(*tool), "H");
    const auto told = tool->takeRecovered();
    ASSERT_EQ(told.size(), 1u);
    EXPECT_THAT(told[0].problem, HasSubstr("changed by another program"));
    EXPECT_FALSE(fileExists(journalOf(font("f"))));
    EXPECT_EQ(tool->versions("f").size(), 1u);
    teach(*tool, "A");
    EXPECT_EQ(labels(*tool), "HA");
}

TEST_F(UnsavedWork, FontsAreMovedCopiedAndDeletedAsTheyAreShown) {
    auto tool = start();
    tool->CreateFont("f");
    tool->endAct("", "at first");
    teach(*tool, "AB");
    tool->endAct("", "two");
    tool->DuplicateFont("copy", "f");
    tool->SaveFont("other");  // which saves that one alone
    EXPECT_EQ(tool->summary("copy").samples, 2);
    EXPECT_EQ(tool->summary("other").samples, 2);
    EXPECT_EQ(tool->summary("f").samples, 0);
    tool->DeleteFont("other");
    tool->RenameFont("g", "f");
    EXPECT_THAT(tool->unsavedFonts(), ElementsAre("g"));
    EXPECT_FALSE(fileExists(journalOf(font("f"))));
    killAndRestart(tool, "g");

    EXPECT_EQ(labels(*tool), "AB");
    EXPECT_EQ(tool->takeRecovered().size(), 1u);
    tool->DeleteFont("g");
    EXPECT_FALSE(tool->currentFont());
    EXPECT_THAT(tool->GetFontList(), ElementsAre("copy"));
    std::vector<int> kept;
    for (const FontVersion& version : tool->versions("g")) kept.push_back(version.samples);
    EXPECT_THAT(kept, ElementsAre(0, 2)) << "as it was saved, and as it was shown";
    EXPECT_EQ(tool->undoWords(), "deletion of font g");
    EXPECT_EQ(tool->undo(), "two");
    EXPECT_EQ(tool->currentFont(), "g");
    EXPECT_EQ(labels(*tool), "AB");
    EXPECT_THAT(tool->unsavedFonts(), ElementsAre("g"));
    EXPECT_EQ(tool->undo(), "at first");
}

// A host that knows nothing of acts.
TEST_F(UnsavedWork, ActsEndByThemselves) {
    auto tool = start();
    tool->CreateFont("f");
    teach(*tool, "AB");
    tool->DeleteSample(300000);
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    tool->DeleteSample(300000);
    EXPECT_EQ(tool->undoWords(), "deletion of 1 sample of B");
    tool->undo();
    EXPECT_EQ(labels(*tool), "B");
    tool->undo();
    EXPECT_EQ(labels(*tool), "");
}

}  // namespace
}  // namespace dravik
