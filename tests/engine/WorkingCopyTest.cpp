// What is not saved: it can be taken back and done again, outlives the program, and belongs to one at a time.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <thread>

#include "base/AtomicFile.h"
#include "base/Text.h"
#include "contract/DrawnText.h"
#include "engine/embedded/EmbeddedTool.h"
#include "engine/font/FontFile.h"
#include "engine/font/Journal.h"
#include "support/Refused.h"
#include "support/TemporaryFolder.h"
#include "tool/Samples.h"

namespace dravik {

using namespace engine;
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
    static void include(EmbeddedTool& tool, const std::string& text) {
        tool.setImage(drawn({text}));
        tool.IncludeSamples(text);
        tool.CommitNewSamples();
    }
    static std::string labels(EmbeddedTool& tool) {
        const auto table = tool.GetSampleData(kAllCommitted, kSampleFields);
        std::string text;
        for (int row = 1; table && row <= table->upperRow(); ++row) text += table->character(row);
        return text;
    }
    static void train(EmbeddedTool& tool) {
        tool.StartTraining();
        while (!tool.IsTrainingDone()) std::this_thread::yield();
    }
    // As a process that is killed leaves its fonts: what was written stays, nothing is tidied up.
    void kill(std::unique_ptr<EmbeddedTool> tool) const {
        std::filesystem::copy(folder.path("Fonts"), folder.path("Kept"),
                              std::filesystem::copy_options::recursive);
        tool.reset();
        std::filesystem::remove_all(folder.path("Fonts"));
        std::filesystem::rename(folder.path("Kept"), folder.path("Fonts"));
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
    include(*tool, "ABH");
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
    include(*tool, "HH");
    tool->endAct("", "more");
    EXPECT_EQ(tool->redoWords(), std::nullopt);
    EXPECT_EQ(labels(*tool), "AHHH");
    EXPECT_EQ(tool->undo(), "trained");
    EXPECT_EQ(labels(*tool), "AH");
}

}  // namespace
}  // namespace dravik
