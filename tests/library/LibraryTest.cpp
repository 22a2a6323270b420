// The library as other programs use it: through its headers and the shared library alone. The embedded tool
// beside it says what must come out.

#include <cstring>
#include <dravik/dravik.hpp>

#include "contract/DrawnText.h"
#include "engine/embedded/EmbeddedTool.h"
#include "support/Testing.h"

namespace dravik::test {
namespace {

Image imageOf(const engine::GreyImage& image) {
    return {image.row(0).data(), image.width(), image.height()};
}

engine::GreyImage line(const std::string& text, int scale = 4) {
    return drawn({text}, {.scale = scale, .dot = scale});
}

// A jobs folder with the font "digits", taught through the library, once for all tests.
struct Taught {
    Taught() {
        Learner learner("digits", folder.path());
        for (const int scale : {3, 4, 6})
            learner.include(imageOf(line("0123456789", scale)), "01234 567\n89");
        training = learner.train();
        check = learner.check();
        learner.save();
    }
    std::string file() const { return JobFolder(folder.path()).fontFile("digits"); }

    const TemporaryFolder folder;
    dravik_training training;
    dravik_check check;
};

const Taught& taught() {
    static const Taught once;
    return once;
}

const Font& font() {
    static const Font once(taught().file());
    return once;
}

std::string textOf(const Image& image, const Settings& settings = {}, const Font& by = font()) {
    return std::string(by.read(image, settings).text());
}

std::vector<int> sidesOf(const dravik_box& box) {
    return {box.left, box.top, box.right, box.bottom};
}

// "r" right, "d" doubtful, "w" wrong, "m" missing, "u" unexpected.
std::string verdicts(const Verification& verification) {
    constexpr std::string_view kLetters = "rdwmu";
    std::string all;
    for (const dravik_verified& one : verification.characters()) all += kLetters[one.verdict];
    return all;
}

template <class Call>
dravik_status statusOf(Call&& call) {
    try {
        call();
    } catch (const Error& error) {
        EXPECT_GT(std::strlen(error.what()), 10u) << "every failure has a text";
        return error.status();
    }
    return DRAVIK_OK;
}

TEST(LibraryTest, TeachesAndReadsAsTheToolItself) {
    EXPECT_EQ(taught().training.samples, 30);
    EXPECT_GT(taught().training.cycles, 0);
    EXPECT_EQ(taught().check.checked, 30);
    EXPECT_EQ(font().characters(), "0123456789");

    engine::EmbeddedTool tool{JobFolder(taught().folder.path())};
    tool.LoadFont("digits");
    const engine::GreyImage image = drawn({"3141", "5926"});
    tool.setImage(image);
    const std::vector<engine::ReadCharacter> wanted = tool.read();
    const Reading reading = Font::named("digits", taught().folder.path()).read(imageOf(image));
    EXPECT_EQ(reading.text(), "3141\n5926");
    ASSERT_EQ(reading.characters().size(), wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const dravik_character& one = reading.characters()[i];
        EXPECT_EQ(one.text, wanted[i].character);
        EXPECT_EQ(one.confidence, wanted[i].confidence);
        EXPECT_EQ(one.line, wanted[i].place.line);
        const auto& place = wanted[i].place;
        EXPECT_THAT(sidesOf(one.box), ElementsAre(place.left, place.top, place.right, place.bottom));
    }
}

TEST(LibraryTest, TellsARegionsBoxesInTheWholeImageWhoseRowsAreApart) {
    const engine::GreyImage image = drawn({"3141", "5926"});
    const std::ptrdiff_t stride = image.width() + 13;
    std::vector<std::uint8_t> apart(static_cast<std::size_t>(stride * image.height()), 0);
    for (int y = 0; y < image.height(); ++y)
        std::copy(image.row(y).begin(), image.row(y).end(), apart.begin() + y * stride);
    const Reading whole = font().read(imageOf(image));
    const dravik_box second{0, whole.characters()[4].box.top - 10, 100000, 100000};
    const Reading part =
        font().read({apart.data(), image.width(), image.height(), stride}, Settings().region(second));
    ASSERT_EQ(part.text(), "5926");
    EXPECT_EQ(sidesOf(part.characters()[0].box), sidesOf(whole.characters()[4].box));
    EXPECT_EQ(part.characters()[0].line, 0);
}

TEST(LibraryTest, WhatTheCallerDoesNotSetIsAsTheFontSays) {
    const TemporaryFolder folder;
    const std::string file = JobFolder(folder.path()).fontFile("digits");
    std::filesystem::create_directories(toPath(file).parent_path());
    std::filesystem::copy_file(toPath(taught().file()), toPath(file));
    const engine::GreyImage image = drawn({"3141", "5926"});
    const Reading whole = font().read(imageOf(image));
    const int middle = whole.characters()[4].box.top - 10;
    {
        Learner learner("digits", folder.path());
        learner.keepSettings(Settings().region({0, middle, image.width(), image.height()}));
        EXPECT_EQ(learner.include(imageOf(image), "5926"), 4);
        EXPECT_EQ(learner.include(imageOf(image), "31415926", Settings().wholeImage()), 8);
        EXPECT_EQ(learner.include(imageOf(image), "5926"), 4) << "the call before has left nothing";
        learner.save();
    }
    const Font kept = Font::named("digits", folder.path());
    const Reading second = kept.read(imageOf(image));
    ASSERT_EQ(second.text(), "5926");
    EXPECT_EQ(sidesOf(second.characters()[0].box), sidesOf(whole.characters()[4].box));
    EXPECT_EQ(textOf(imageOf(image), Settings().region({0, 0, 9999, middle}).wholeImage(), kept),
              "3141\n5926");
    EXPECT_EQ(textOf(imageOf(image), Settings().region({0, 0, image.width(), middle}), kept), "3141");

    engine::GreyImage onItsHead = image;
    std::reverse(&onItsHead(0, 0), &onItsHead(image.width() - 1, image.height() - 1) + 1);
    const Settings turned = std::move(Settings().turnedRegion(0, 0, image.width(), image.height(), 180));
    EXPECT_EQ(textOf(imageOf(onItsHead), turned, kept), "3141\n5926");
    EXPECT_NE(textOf(imageOf(image), Settings().polarity(DRAVIK_LIGHT_ON_DARK)), "3141\n5926");
    EXPECT_NE(textOf(imageOf(image), Settings().smallestHeight(200)), "3141\n5926");
    const engine::GreyImage dots = drawn({"3141"}, {.scale = 8, .dot = 3});
    const Reading asDots = font().read(imageOf(dots), Settings().print(DRAVIK_DOTS));
    const Reading asSolid = font().read(imageOf(dots), Settings().print(DRAVIK_SOLID));
    EXPECT_NE(asDots.characters().front().confidence, asSolid.characters().front().confidence);
}

TEST(LibraryTest, VerifiesCharacterByCharacter) {
    const Reading reading = font().read(imageOf(line("3141")));
    for (const auto& [expected, told] : {std::pair("31 41\n", "rrrr"),
                                         {"314", "rrru"},
                                         {"x3141", "mrrrr"},
                                         {"x314", "mrrru"},  // one missing and one too many, not four wrong
                                         {"3941", "rwrr"},
                                         {"", "uuuu"}}) {
        const Verification verification = reading.verify(expected);
        EXPECT_EQ(verdicts(verification), told);
        EXPECT_EQ(verification.passed(), std::string(told) == "rrrr") << expected;
    }
    const Verification wrong = reading.verify("39\u00e41");
    ASSERT_EQ(wrong.characters().size(), 4u);
    const dravik_verified& umlaut = wrong.characters()[2];
    EXPECT_STREQ(umlaut.expected, "\u00e4");
    EXPECT_STREQ(umlaut.read, "4");
    EXPECT_EQ(umlaut.index, 2);
    EXPECT_EQ(umlaut.confidence, 0);
    EXPECT_EQ(wrong.characters()[3].confidence, reading.characters()[3].confidence);

    const Reading unsure = font().read(imageOf(line("3141")), Settings().rejectLimit(1));
    EXPECT_EQ(unsure.text(), "????");
    EXPECT_STREQ(unsure.characters()[0].text, "3") << "the answer is told below the limit too";
    EXPECT_EQ(verdicts(unsure.verify("3141")), "dddd");
    EXPECT_FALSE(unsure.verify("3141").passed());
    EXPECT_TRUE(font().read(imageOf(engine::GreyImage(64, 64, 200))).verify(" ").passed());
}

TEST(LibraryTest, AlternativesComeTheLikeliestFirstWithoutTheAnswerAndVerifyAsWrong) {
    // Characters with a part missing look like several.
    engine::GreyImage image = line("88888");
    std::size_t seen = 0;
    for (int cut = 0; cut < 8; ++cut) {
        for (int y = 24 + cut; y < 24 + cut + 3; ++y)
            for (int x = 0; x < image.width(); ++x) image(x, y) = 220;
        const Reading reading = font().read(imageOf(image), Settings().rejectLimit(0));
        const auto all = reading.characters();
        for (std::size_t place = 0; place < all.size(); ++place) {
            const dravik_character& one = all[place];
            double before = 1;
            for (std::int32_t i = 0; i < one.alternative_count; ++i, ++seen) {
                const dravik_alternative& other = one.alternatives[i];
                EXPECT_STRNE(other.text, one.text);
                EXPECT_LE(other.confidence, before);
                EXPECT_LE(other.confidence, one.confidence);
                before = other.confidence;
                std::string expected;
                for (std::size_t k = 0; k < all.size(); ++k)
                    expected += k == place ? other.text : all[k].text;
                const Verification verification = reading.verify(expected);
                EXPECT_EQ(verification.characters()[place].verdict, DRAVIK_WRONG);
                EXPECT_EQ(verification.characters()[place].confidence, other.confidence);
            }
        }
    }
    EXPECT_GT(seen, 0u) << "nothing was doubtful";
}

TEST(LibraryTest, WhatMakesNoSenseIsABadArgument) {
    const std::string folder = taught().folder.path();
    const engine::GreyImage image = line("3141");
    const std::uint8_t* top = image.row(0).data();
    const dravik_box outside{5000, 0, 6000, 9}, empty{5, 0, 5, 9};
    const std::vector<std::function<void()>> calls = {
        [&] { Learner("NEW", folder); },
        [&] { Learner("Digits", folder); },
        [&] { textOf(Image(top, 0, 5)); },
        [&] { textOf(Image(top, 30, 5, 29)); },
        [&] { textOf(Image(top, 10000, 10000)); },
        [&] { textOf(imageOf(image), Settings().region(outside)); },
        [&] { Settings().region(empty); },
        [] { Settings().turnedRegion(0, 0, 3, 100, 0); },
        [] { Settings().rejectLimit(1.01); },
        [] { Settings().smallestHeight(2001); },
        [] { Settings().polarity(static_cast<dravik_polarity>(3)); },
        [&] { (void)font().read(imageOf(image)).verify("\xff"); },
    };
    for (std::size_t i = 0; i < calls.size(); ++i) EXPECT_EQ(statusOf(calls[i]), DRAVIK_BAD_ARGUMENT) << i;
}

TEST(LibraryTest, FailuresHaveAStatusAndATextAndChangeNothing) {
    const std::string folder = taught().folder.path();
    EXPECT_EQ(statusOf([&] { Font("gone.nnd"); }), DRAVIK_NOT_FOUND);
    EXPECT_EQ(statusOf([&] { Font::named("gone", folder); }), DRAVIK_NOT_FOUND);
    const std::string torn = taught().folder.path("torn.nnd");
    std::filesystem::copy_file(toPath(taught().file()), toPath(torn));
    std::filesystem::resize_file(toPath(torn), 5000);
    EXPECT_EQ(statusOf([&] { (void)Font(torn); }), DRAVIK_DAMAGED);
    { Learner untaught("untaught", folder); }
    EXPECT_EQ(statusOf([&] { Font::named("untaught", folder); }), DRAVIK_NOT_TRAINED);

    // In C: results stay, and the error may be null.
    dravik_font* opened = nullptr;
    dravik_error error;
    ASSERT_EQ(dravik_font_open(taught().file().c_str(), &opened, &error), DRAVIK_OK);
    const dravik_font* before = opened;
    EXPECT_EQ(dravik_font_open("gone.nnd", &opened, &error), DRAVIK_NOT_FOUND);
    EXPECT_EQ(error.status, DRAVIK_NOT_FOUND);
    EXPECT_THAT(error.text, HasSubstr("gone.nnd"));
    EXPECT_EQ(opened, before);
    EXPECT_EQ(dravik_font_open(nullptr, &opened, nullptr), DRAVIK_BAD_ARGUMENT);
    const std::string longName = std::string(600, 'x') + "\u00e4" + std::string(400, '\t');
    EXPECT_EQ(dravik_font_open(longName.c_str(), &opened, &error), DRAVIK_NOT_FOUND);
    EXPECT_LT(std::strlen(error.text), sizeof error.text);
    dravik_font_free(opened);
    dravik_font_free(nullptr);
    dravik_reading_free(nullptr);
    dravik_learner_free(nullptr);
    std::size_t count = 7;
    EXPECT_EQ(dravik_reading_characters(nullptr, &count), nullptr);
    EXPECT_EQ(count, 0u);
}

TEST(LibraryTest, AnIncludeThatDoesNotFitAndAStoppedTrainingLeaveTheFontAsItWas) {
    const TemporaryFolder folder;
    Learner learner("f", folder.path());
    const engine::GreyImage image = line("0123456789");
    EXPECT_EQ(statusOf([&] { learner.train(); }), DRAVIK_NO_CHARACTERS);
    EXPECT_EQ(statusOf([&] { learner.include(imageOf(image), "012345678"); }), DRAVIK_COUNT_MISMATCH);
    EXPECT_EQ(statusOf([&] { learner.check(); }), DRAVIK_NO_CHARACTERS);
    EXPECT_EQ(learner.include(imageOf(image), "0123456789"), 10);
    const Settings middle = std::move(Settings().region({24 + 24, 0, 24 + 72, 1000}));
    EXPECT_EQ(learner.include(imageOf(line("0123")), "12", middle), 2);

    int asked = 0;
    const auto stop = [&](const dravik_training& soFar) {
        EXPECT_EQ(soFar.samples, 12);
        return ++asked > 0;
    };
    EXPECT_EQ(statusOf([&] { learner.train(0, stop); }), DRAVIK_NO_RESULT);
    EXPECT_EQ(asked, 1);
    EXPECT_THROW(learner.train(0, [](const dravik_training&) -> bool { throw std::domain_error("mine"); }),
                 std::domain_error);
    EXPECT_EQ(statusOf([&] { learner.train(-1); }), DRAVIK_BAD_ARGUMENT);
    EXPECT_EQ(learner.train(30).samples, 12);
    EXPECT_EQ(statusOf([&] { Font::named("f", folder.path()); }), DRAVIK_NOT_TRAINED)
        << "it is not saved yet";
    learner.save();
    EXPECT_EQ(Font::named("f", folder.path()).read(imageOf(line("2026"))).text(), "2026");
}

}  // namespace
}  // namespace dravik::test
