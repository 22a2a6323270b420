// How long the program's window is held by what an operator does all the time - leafing, zooming, scrolling,
// typing, selecting - and by what is one step, with 10,000 images open and a font of 74 characters and 99,999
// samples. The bounds are 16 ms, one frame, and 300 ms. Each figure is the time until the window waits for
// the next event, painting included; work beside the window is not in it.
#include <benchmark/benchmark.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QThread>
#include <algorithm>
#include <chrono>
#include <ctime>
#include <random>

#include "LargestFont.h"
#include "engine/font/FontVersions.h"
#include "qt/MainWindow.h"
#include "qt/QtImage.h"
#include "qt/QtPlatform.h"

namespace dravik {

using namespace qt;
using namespace trainer;
namespace {

namespace fs = std::filesystem;

constexpr int kImages = 10000, kPhotographs = 24;

// Agrees to nothing, shows nothing of its own.
class QuietPlatform : public QtPlatform {
  public:
    ui::Answer messageBox(const ui::MessageBox&) override { return ui::Answer::No; }
};

// One window for all figures: making it takes long.
struct Desk {
    Desk() {
        const fs::path parts = fs::path(DRAVIK_SOURCE_DIR) / "data/parts/rendered_lines";
        const fs::path images = folder.path / "images";
        fs::create_directory(images);
        std::vector<fs::path> shipped;
        for (const auto& entry : fs::directory_iterator(parts))
            if (entry.path().extension() == ".png") shipped.push_back(entry.path());
        std::sort(shipped.begin(), shipped.end());
        for (int i = 0; i < kImages; ++i) {
            std::string name = std::to_string(i);
            name.insert(0, 5 - name.size(), '0');
            fs::create_symlink(shipped[static_cast<std::size_t>(i) % shipped.size()],
                               images / (name + ".png"));
        }
        platform.setMainWindow(&window);
        trainer.setPatience(kPatience);
        window.resize(1280, 800);
        window.show();
        const auto start = std::chrono::steady_clock::now();
        window.open({images.string()});
        opening = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
        trainer.control().showFont("largest");
        settle();
    }

    // Until nothing goes on beside the window and no event waits.
    void settle() {
        for (int quiet = 0; quiet < 3;) {
            QApplication::processEvents(QEventLoop::AllEvents, 5);
            quiet = trainer.isWorking() || window.model().strip.decodeTimer().enabled() ? 0 : quiet + 1;
        }
    }
    // Images of that width as a camera gives them, with noise; the first one comes up.
    void openPhotographs(int wide) {
        const fs::path images = folder.path / ("photographs" + std::to_string(wide));
        fs::create_directory(images);
        std::minstd_rand random;
        for (int i = 0; i < kPhotographs; ++i) {
            QImage image(wide, wide * 4 / 5, QImage::Format_Grayscale8);
            for (int y = 0; y < image.height(); ++y)
                for (uchar *at = image.scanLine(y), *end = at + wide; at != end; ++at)
                    *at = static_cast<uchar>(120 + random() % 12);
            QPainter painter(&image);
            painter.setFont(QFont(QStringLiteral("DejaVu Sans Mono"), wide / 24));
            painter.drawText(image.rect(), Qt::AlignCenter,
                             QStringLiteral("LOT A%1\nEXP 2027-05-15").arg(7932 + i));
            painter.end();
            image.save(QString::fromStdString((images / (std::to_string(100 + i) + ".png")).string()));
        }
        const int first = trainer.parts().count();
        window.open({images.string()});
        trainer.parts().setCurrent(first);
    }
    template <class View>
    View& view(const char* name) {
        return *window.findChild<View*>(QLatin1String(name));
    }
    QAction& action(const char* name) { return view<QAction>(name); }

    const JobsFolder folder;
    const std::string font = [this] {
        const JobFolder jobs((folder.path / "Jobs").string());
        fs::create_directories(jobs.fontsFolder());
        writeFont(largestFont(kMostSamples), jobs.fontFile("largest"));
        return std::string("largest");
    }();
    QuietPlatform platform;
    Trainer trainer{platform, JobFolder((folder.path / "Jobs").string()), decodeImageFile, false};
    MainWindow window{trainer, platform};
    double opening = 0;
};

Desk& desk() {
    static Desk* const one = new Desk;  // gone with the program
    return *one;
}

double threadSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// How long `act` holds the window's thread; counters tell the longest, and its share of the processor, which
// is less where the thread waits or the machine is busy with others.
template <class Act>
void measure(benchmark::State& state, double bound, Act act, bool settles = true) {
    Desk& at = desk();
    at.settle();
    double longest = 0, longestCpu = 0;
    for (auto _ : state) {
        const double cpu = threadSeconds();
        const auto start = std::chrono::steady_clock::now();
        act(at);
        QApplication::processEvents();
        const std::chrono::duration<double> held = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(held.count());
        longest = std::max(longest, held.count() * 1000);
        longestCpu = std::max(longestCpu, (threadSeconds() - cpu) * 1000);
        if (settles) at.settle();
    }
    at.settle();
    state.counters["longest_ms"] = longest;
    state.counters["longest_cpu_ms"] = longestCpu;
    state.counters["bound_ms"] = bound;
}

void openFolderAgain(benchmark::State& state) {
    measure(state, 300, [](Desk& at) { at.window.open({(at.folder.path / "images").string()}); });
    state.counters["first_time_ms"] = desk().opening;
}
void leaf(benchmark::State& state) {
    measure(state, 16, [](Desk& at) { at.action("next").trigger(); });
}
void leafFast(benchmark::State& state) {
    measure(
        state, 16, [](Desk& at) { at.action("next").trigger(); }, false);
}

// Notes when the part's view has drawn another image than it had.
class DrawnImage : public QObject {
  public:
    explicit DrawnImage(Desk& at) : at_(at), view_(at.view<QAbstractScrollArea>("partView")) {
        view_.viewport()->installEventFilter(this);
        before_ = at_.window.model().view.image();
    }
    bool isDrawn() const { return drawn_; }

  private:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::Paint) return false;
        const engine::GreyImage* now = at_.window.model().view.image();
        if (now && now != before_ && !at_.trainer.parts().isDecoding()) drawn_ = true;
        return false;
    }

    Desk& at_;
    QAbstractScrollArea& view_;
    const engine::GreyImage* before_ = nullptr;
    bool drawn_ = false;
};

// From a key in the strip until the image is drawn, which waits for its decoding; images are so wide, 0 for
// those shipped.
void stepToDrawn(benchmark::State& state) {
    Desk& at = desk();
    const int wide = static_cast<int>(state.range(0));
    if (wide > 0) at.openPhotographs(wide);
    auto& strip = at.view<QListView>("thumbnails");
    double longest = 0, longestCpu = 0;
    for (auto _ : state) {
        strip.setFocus();
        at.settle();
        QThread::msleep(150);  // no one steps faster than that and looks
        at.settle();
        const DrawnImage image(at);
        const double cpu = threadSeconds();
        const auto start = std::chrono::steady_clock::now();
        QTest::keyClick(&strip, Qt::Key_Right);
        while (!image.isDrawn()) QApplication::processEvents(QEventLoop::AllEvents, 1);
        QApplication::processEvents();
        const std::chrono::duration<double> held = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(held.count());
        longest = std::max(longest, held.count() * 1000);
        longestCpu = std::max(longestCpu, (threadSeconds() - cpu) * 1000);
    }
    at.settle();
    state.counters["longest_ms"] = longest;
    state.counters["longest_cpu_ms"] = longestCpu;
    state.counters["bound_ms"] = 20;
}
void zoom(benchmark::State& state) {
    int count = 0;
    measure(state, 16, [&](Desk& at) { at.action(++count % 12 < 6 ? "zoomIn" : "zoomOut").trigger(); });
    desk().action("fit").trigger();
}
void scrollStrip(benchmark::State& state) {
    int position = 0;
    measure(state, 16, [&](Desk& at) {
        position = (position + 40000) % (kImages * 116);
        at.window.model().strip.scrollTo(position);
    });
}
void type(benchmark::State& state) {
    auto& box = desk().view<QLineEdit>("txtSampleInput");
    int count = 0;
    measure(state, 16, [&](Desk&) {
        if (++count % 20 == 0)
            QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
        else
            QTest::keyClick(&box, '0');
    });
    box.clear();
}
void typeIntoCharacterSet(benchmark::State& state) {
    auto& box = desk().view<QLineEdit>("txtCharSet");
    int count = 0;
    measure(state, 300, [&](Desk&) {
        if (++count % 2 == 1)
            QTest::keyClick(&box, '#');
        else
            QTest::keyClick(&box, Qt::Key_Backspace);
    });
}
void selectSamples(benchmark::State& state) {
    desk().action("viewNumeric").trigger();
    auto& grid = desk().view<QTableView>("grid");
    grid.setFocus();
    int count = 0;
    measure(state, 16, [&](Desk&) {
        QTest::keyClick(&grid, ++count % 500 < 250 ? Qt::Key_PageDown : Qt::Key_PageUp, Qt::ShiftModifier);
    });
}
void selectAllSamples(benchmark::State& state) {
    auto& grid = desk().view<QTableView>("grid");
    int count = 0;
    measure(state, 16, [&](Desk&) {
        if (++count % 2 == 1)
            QTest::keyClick(&grid, Qt::Key_A, Qt::ControlModifier);
        else
            QTest::keyClick(&grid, Qt::Key_Home);
    });
}
void scrollSamples(benchmark::State& state) {
    auto& grid = desk().view<QTableView>("grid");
    int row = 0;
    measure(state, 16, [&](Desk&) {
        row = (row + 4567) % 99000;
        grid.verticalScrollBar()->setValue(row);
    });
}
void display(benchmark::State& state) {
    auto& choice = desk().trainer.control().screen().numeric.cboDisplay;
    int count = 0;
    measure(state, 300, [&](Desk&) { choice.setListIndex(++count % 2 == 1 ? 2 : 0); });
    choice.setListIndex(0);
}
void deleteSample(benchmark::State& state) {
    auto& grid = desk().view<QTableView>("grid");
    measure(state, 300, [&](Desk& at) {
        at.trainer.control().screen().numeric.grid.select(500, 0, 500, 0);
        QTest::keyClick(&grid, Qt::Key_Delete);
    });
}
void undoDeletion(benchmark::State& state) {
    measure(state, 300, [&](Desk& at) { at.action("undo").trigger(); });
    desk().action("viewGraphical").trigger();
}

BENCHMARK(openFolderAgain)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(leaf)->UseManualTime()->Iterations(60)->Unit(benchmark::kMillisecond);
BENCHMARK(leafFast)->UseManualTime()->Iterations(200)->Unit(benchmark::kMillisecond);
BENCHMARK(stepToDrawn)
    ->Arg(0)
    ->Arg(640)
    ->Arg(1280)
    ->Arg(2448)
    ->UseManualTime()
    ->Iterations(kPhotographs - 1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(zoom)->UseManualTime()->Iterations(60)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollStrip)->UseManualTime()->Iterations(60)->Unit(benchmark::kMillisecond);
BENCHMARK(type)->UseManualTime()->Iterations(60)->Unit(benchmark::kMillisecond);
BENCHMARK(typeIntoCharacterSet)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(selectSamples)->UseManualTime()->Iterations(100)->Unit(benchmark::kMillisecond);
BENCHMARK(selectAllSamples)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollSamples)->UseManualTime()->Iterations(60)->Unit(benchmark::kMillisecond);
BENCHMARK(display)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(deleteSample)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(undoDeletion)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace dravik

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Dravik"));
    QCoreApplication::setApplicationName(QStringLiteral("Window bench"));
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    std::error_code ignored;
    std::filesystem::remove_all(dravik::desk().folder.path, ignored);
    std::_Exit(0);  // the window is not taken down, which is not measured
}
