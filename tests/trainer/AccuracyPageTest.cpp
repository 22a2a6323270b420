// The page that is handed over with a font: complete, whole in one file, and harmless whatever images are
// called.
#include "trainer/commands/AccuracyPage.h"

#include "engine/font/SampleOrigin.h"
#include "trainer/support/Workspace.h"

namespace dravik::test {
namespace {

TEST(AccuracyPage, ShowsWhatIsDoubtfulAndEscapesWhatOthersHaveNamed) {
    SampleStore store;
    const auto image = std::make_shared<const SourceImage>(SourceImage{"C:\\parts\\<script>&'\".png", 0});
    std::vector<Sample> samples(7);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i].code = i < 4 ? '<' : '&';
        samples[i].inputs.fill(i < 3 ? 0.2f : 0.8f);  // the fourth looks like the others
        samples[i].inputs[0] = 0.1f * static_cast<float>(i);
        samples[i].origin = std::make_shared<const SampleOrigin>(
            SampleOrigin{smallPicture(GreyImage(9, 12, 200), {0, 0, 9, 12}), image, {0, 0, 9, 12}});
    }
    store.include(samples);
    store.commit();
    const auto columns = store.columns(tool::SampleKind::Committed);
    const auto check = checkHeldOut(*columns, kTrainingSeed, [] { return true; });
    ASSERT_TRUE(check);
    const std::string page = accuracyPage({"a<b", "", true, columns, &*check});
    for (const char* words :
         {"Accuracy of font a&lt;b", "&lt;, Distance 0.9", "&lt;script&gt;&amp;&#39;&quot;.png",
          "src=\"data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAA", "<td>&amp;</td><td class=\"n\">3</td>",
          "<th>Read as</th>"})
        EXPECT_THAT(page, HasSubstr(words));
    EXPECT_THAT(page, Not(HasSubstr("<script")));
    EXPECT_THAT(page, Not(HasSubstr("C:\\parts"))) << "folders are nobody else's business";
    EXPECT_THAT(page, Not(HasSubstr("http"))) << "nothing from elsewhere";
}

TEST(AccuracyPage, IsWrittenByTheCommand) {
    const Workspace workspace;
    ASSERT_EQ(workspace.learnDigits("digits").status, 0);
    const std::string file = workspace.path("digits.html");
    const auto result = workspace.run({"fonts", "--report", "digits", file});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, ElementsAre("wrote " + file));
    EXPECT_THAT(Workspace::content(file), HasSubstr("Held-out check (3-fold): 100.0 % right"));
    EXPECT_EQ(workspace.run({"fonts", "--report", "gone", file}).status, 1);
    EXPECT_EQ(workspace.run({"fonts", "--report", "digits", workspace.path("no/x.html")}).status, 1);
    EXPECT_EQ(workspace.run({"fonts", "--report", "digits"}).status, 2);
}

}  // namespace
}  // namespace dravik::test
