// How long the screen takes with the largest font: 74 characters and 99,999 committed samples, on the
// embedded tool. Each figure stands beside a peer that shows or computes the same, or has the bound of one
// frame, 16 ms.
#include <benchmark/benchmark.h>

#include <QAbstractTableModel>
#include <QApplication>
#include <QCoreApplication>
#include <QHeaderView>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTableView>
#include <filesystem>
#include <memory>

#include "LargestFont.h"
#include "base/NumberFormat.h"
#include "base/Text.h"
#include "contract/DrawnText.h"
#include "engine/embedded/EmbeddedTool.h"
#include "engine/font/FontState.h"
#include "engine/font/FontVersions.h"
#include "engine/font/SampleOrigin.h"
#include "qt/Peers.h"
#include "screen/histogram/dlgCharHist.h"
#include "screen/shell/DravikDlg.h"
#include "tool/Samples.h"
#include "trainer/window/GallerySamples.h"

namespace dravik {

using namespace engine;
using namespace qt;
using namespace screen;
using namespace tool;
using namespace ui;
namespace {

constexpr char kFont[] = "largest";
constexpr char kIncluded[] = "A1B2C3E4H5L6T7908ABC";
constexpr int kDeleted = 1000;

// Picks from the menus as told, agrees to nothing, and keeps the histogram form that was shown.
class Desk : public Platform {
  public:
    std::string pick;
    dlgCharHist* histogram = nullptr;
    std::string clipboard;

    Answer messageBox(const MessageBox&) override { return Answer::No; }
    void showModal(Form& form) override { form.unload(); }
    void show(Form& form) override {
        form.activate();
        if (auto* opened = dynamic_cast<dlgCharHist*>(&form)) histogram = opened;
    }
    void popUpMenu(PopupMenu& menu, Widget&, double, double) override {
        if (!pick.empty()) menu.item(pick).click();
    }
    void setClipboardText(const std::string& text) override { clipboard = text; }
    std::string fileDateText(const std::string&) override { return "today"; }
    std::string dateText() override { return "today"; }
    std::string timeText() override { return "now"; }
    void setBusy(bool) override {}
};

// The screen with the largest font on it.
struct Session {
    explicit Session(std::size_t samples = kMostSamples) {
        static const JobsFolder jobs;
        const JobFolder folder(jobs.path.string());
        const std::string name = kFont + std::to_string(samples);
        if (!std::filesystem::exists(folder.fontFile(name)))
            writeFont(largestFont(samples), folder.fontFile(name));
        tool = std::make_shared<EmbeddedTool>(folder);
        tool->LoadFont(name);
        control = std::make_unique<DravikDlg>(desk, folder);
        control->setStep(tool);
        screen().numeric.cboDisplay.setListIndex(0);
    }
    Screen& screen() { return control->screen(); }
    Grid& grid() { return screen().numeric.grid; }
    void clickHeading(int column) {
        grid().setMouseCell(0, column);
        grid().mouseDown({kLeftButton, 0, 0, 0});
    }

    Desk desk;
    std::shared_ptr<EmbeddedTool> tool;
    std::unique_ptr<DravikDlg> control;
};

// The same records as a Qt program would offer them: formatted when asked for, sorted by Qt's own proxy.
class PeerModel : public QAbstractTableModel {
  public:
    explicit PeerModel(RecordTablePtr table) : table_(std::move(table)) {}
    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : table_->upperRow();
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : table_->upperColumn() + 1;
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole) return {};
        const int row = index.row() + 1;
        if (index.column() == 0) return index.row();
        if (index.column() == 1) return QChar(static_cast<char16_t>(table_->number(row, 1)));
        return QString::number(table_->number(row, index.column()), 'f', 3);
    }

  private:
    RecordTablePtr table_;
};

RecordTablePtr committed(Session& session) {
    return session.tool->GetSampleData(kAllCommitted, kSampleFields);
}

std::unique_ptr<QTableView> peerView(QAbstractItemModel& model) {
    auto view = std::make_unique<QTableView>();
    view->setModel(&model);
    view->resize(1000, 600);
    view->verticalHeader()->hide();
    return view;
}

// The gallery of the largest font: put in order, a page further with its pictures drawn, everything selected.
struct Gallery {
    Gallery() {
        grid.setSource(std::make_shared<trainer::GallerySamples>(samples(), trainer::ShownSamples{}));
        view.reset(qt::make(grid, nullptr));
        view->resize(620, 400);
        view->show();
        QCoreApplication::processEvents();
    }
    static SampleColumnsPtr samples() {
        GreyImage image(24, 40, 200);
        for (int y = 0; y < 40; ++y)
            for (int x = 8; x < 14; ++x) image(x, y) = static_cast<std::uint8_t>(30 + (x * 7 + y * 3) % 40);
        const auto origin = std::make_shared<const SampleOrigin>(
            SampleOrigin{smallPicture(image, {0, 0, 24, 40}), nullptr, {}});
        FontRecord font = largestFont(kMostSamples);
        for (Sample& sample : font.samples) sample.origin = origin;
        return FontState(font).samples.columns(SampleKind::Committed);
    }

    PictureGrid grid{"gallery"};
    std::unique_ptr<QWidget> view;
};

void galleryInOrder(benchmark::State& state) {
    const SampleColumnsPtr samples = Gallery::samples();
    for (auto _ : state)
        benchmark::DoNotOptimize(trainer::GallerySamples(samples, trainer::ShownSamples{}).count());
}
BENCHMARK(galleryInOrder)->Unit(benchmark::kMillisecond);

void galleryPageDown(benchmark::State& state) {
    Gallery gallery;
    for (auto _ : state) {
        gallery.grid.move(KeyMove::PageDown, 0);
        QCoreApplication::processEvents();
    }
}
BENCHMARK(galleryPageDown)->Unit(benchmark::kMillisecond);

void gallerySelectAll(benchmark::State& state) {
    Gallery gallery;
    for (auto _ : state) {
        gallery.grid.selectAll();
        QCoreApplication::processEvents();
    }
}
BENCHMARK(gallerySelectAll)->Unit(benchmark::kMillisecond);

void fillGrid(benchmark::State& state) {
    Session session;
    const std::unique_ptr<QWidget> view(make(session.grid(), nullptr));
    view->resize(1000, 600);
    for (auto _ : state) session.screen().numeric.cboDisplay.click();
    state.counters["rows"] = session.grid().rows() - 1;
}
BENCHMARK(fillGrid)->Unit(benchmark::kMillisecond);

void fillPeerOfItems(benchmark::State& state) {
    Session session;
    const RecordTablePtr table = committed(session);
    const PeerModel source(table);
    for (auto _ : state) {
        QStandardItemModel model(source.rowCount(), source.columnCount());
        for (int row = 0; row < source.rowCount(); ++row)
            for (int column = 0; column < source.columnCount(); ++column)
                model.setItem(
                    row, column,
                    new QStandardItem(source.data(source.index(row, column), Qt::DisplayRole).toString()));
        const auto view = peerView(model);
        state.PauseTiming();
        model.clear();
        state.ResumeTiming();
    }
}
BENCHMARK(fillPeerOfItems)->Iterations(1)->Unit(benchmark::kMillisecond);

void fillPeerWithProxy(benchmark::State& state) {
    Session session;
    QSortFilterProxyModel proxy;
    const auto view = peerView(proxy);
    for (auto _ : state) {
        PeerModel model(committed(session));
        proxy.setSourceModel(&model);
        benchmark::DoNotOptimize(proxy.rowCount());
        proxy.setSourceModel(nullptr);
    }
}
BENCHMARK(fillPeerWithProxy)->Unit(benchmark::kMillisecond);

// Both sorts in turn, each from the order that the other leaves; `column` is the one that is timed.
template <class Sort>
void sortInTurn(benchmark::State& state, const Sort& sort) {
    const int column = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        sort(1 - column);
        state.ResumeTiming();
        sort(column);
    }
}

void sortGrid(benchmark::State& state) {
    Session session;
    const std::unique_ptr<QWidget> view(make(session.grid(), nullptr));
    view->resize(1000, 600);
    sortInTurn(state, [&](int column) { session.clickHeading(column); });
}
BENCHMARK(sortGrid)->ArgName("column")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void sortPeerWithProxy(benchmark::State& state) {
    Session session;
    PeerModel model(committed(session));
    QSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    const auto view = peerView(proxy);
    sortInTurn(state, [&](int column) { proxy.sort(column); });
}
BENCHMARK(sortPeerWithProxy)->ArgName("column")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// A refill while the grid is sorted by character, as every deletion and include makes it.
void refillSortedGrid(benchmark::State& state) {
    Session session;
    const std::unique_ptr<QWidget> view(make(session.grid(), nullptr));
    session.clickHeading(1);
    for (auto _ : state) session.screen().numeric.cboDisplay.click();
}
BENCHMARK(refillSortedGrid)->Unit(benchmark::kMillisecond);

// One page of the table drawn, at another place each time; both tables show the same cells.
void scrollGrid(benchmark::State& state) {
    Session session;
    const std::unique_ptr<QWidget> view(make(session.grid(), nullptr));
    auto& table = dynamic_cast<QTableView&>(*view);
    table.resize(1000, 600);
    int row = 0;
    for (auto _ : state) {
        row = (row + 4567) % (session.grid().rows() - 1);
        table.scrollTo(table.model()->index(row, 0), QAbstractItemView::PositionAtTop);
        benchmark::DoNotOptimize(table.grab());
    }
}
BENCHMARK(scrollGrid)->Unit(benchmark::kMillisecond);

void scrollPeer(benchmark::State& state) {
    Session session;
    PeerModel model(committed(session));
    QSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    const auto view = peerView(proxy);
    const std::unique_ptr<QWidget> grid(make(session.grid(), nullptr));
    const auto& table = dynamic_cast<const QTableView&>(*grid);
    view->verticalHeader()->setMinimumSectionSize(1);
    view->verticalHeader()->setDefaultSectionSize(table.verticalHeader()->defaultSectionSize());
    for (int column = 0; column < proxy.columnCount(); ++column)
        view->setColumnWidth(column, table.columnWidth(column));
    int row = 0;
    for (auto _ : state) {
        row = (row + 4567) % proxy.rowCount();
        view->scrollTo(proxy.index(row, 0), QAbstractItemView::PositionAtTop);
        benchmark::DoNotOptimize(view->grab());
    }
}
BENCHMARK(scrollPeer)->Unit(benchmark::kMillisecond);

void selectAll(benchmark::State& state) {
    Session session;
    const std::unique_ptr<QWidget> view(make(session.grid(), nullptr));
    Grid& grid = session.grid();
    for (auto _ : state) {
        grid.select(1, 0, 1, 0);
        grid.select(1, 0, grid.rows() - 1, grid.columns() - 1);
    }
}
BENCHMARK(selectAll)->Unit(benchmark::kMillisecond);

void copySelected(benchmark::State& state) {
    Session session;
    Grid& grid = session.grid();
    const int rows = static_cast<int>(state.range(0));
    grid.select(1, 0, rows, grid.columns() - 1);
    for (auto _ : state) grid.keyDown(kKeyInsert, kCtrlMask);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(session.desk.clipboard.size()));
    state.counters["rows"] = rows;
}
BENCHMARK(copySelected)->ArgName("rows")->Arg(kDeleted)->Arg(kMostSamples)->Unit(benchmark::kMillisecond);

// What a Qt program does for the same text.
void copyPeer(benchmark::State& state) {
    Session session;
    PeerModel model(committed(session));
    const int rows = static_cast<int>(state.range(0));
    for (auto _ : state) {
        QString text;
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < model.columnCount(); ++column)
                text += model.index(row, column).data().toString() + QLatin1Char('\t');
            text += QStringLiteral("\r\n");
        }
        benchmark::DoNotOptimize(text.toUtf8());
    }
    state.counters["rows"] = rows;
}
BENCHMARK(copyPeer)->ArgName("rows")->Arg(kDeleted)->Arg(kMostSamples)->Unit(benchmark::kMillisecond);

void deleteSelected(benchmark::State& state) {
    Session session;
    const std::unique_ptr<QWidget> view(make(session.grid(), nullptr));
    Grid& grid = session.grid();
    int row = 1;
    for (auto _ : state) {
        row = (row + 7919) % 50'000 + 1;
        grid.select(row, 0, row + kDeleted - 1, grid.columns() - 1);
        grid.keyDown(kKeyDelete, 0);
    }
    state.counters["left"] = grid.rows() - 1;
}
BENCHMARK(deleteSelected)->Iterations(40)->Unit(benchmark::kMillisecond);

void deletePeerRows(benchmark::State& state) {
    QStandardItemModel model(kMostSamples, 1);
    const auto view = peerView(model);
    int row = 1;
    for (auto _ : state) {
        row = (row + 7919) % 50'000 + 1;
        for (int call = 0; call < kDeleted; ++call) model.removeRow(row);
    }
}
BENCHMARK(deletePeerRows)->Iterations(40)->Unit(benchmark::kMillisecond);

void openHistogram(benchmark::State& state, const char* item) {
    Session session;
    session.desk.pick = item;
    Label& cell = *session.screen().overview.lblChar.front();
    for (auto _ : state) {
        cell.mouseDown({kRightButton, 0, 60, 60});
        session.desk.histogram->unload();
    }
    if (!session.desk.histogram || session.desk.histogram->chart.scene().lines.empty())
        state.SkipWithError("no histogram");
}
BENCHMARK_CAPTURE(openHistogram, font, "mnuMainFontHist")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(openHistogram, character, "mnuMainCharHist")->Unit(benchmark::kMillisecond);

// A bin's samples deleted by the histogram's menu, and the histogram built again.
void deleteBin(benchmark::State& state) {
    Session session;
    session.desk.pick = "mnuMainCharHist";
    auto& cells = session.screen().overview.lblChar;
    std::size_t next = 0;
    for (auto _ : state) {
        state.PauseTiming();
        session.desk.pick = "mnuMainCharHist";
        cells[next++ % cells.size()]->mouseDown({kRightButton, 0, 60, 60});
        Chart& chart = session.desk.histogram->chart;
        const ChartBar bar = chart.scene().bars.back();
        chart.mouseMove({0, 0, bar.left + 1, bar.top / 2});
        session.desk.histogram->tmrGraphics.tick();
        session.desk.pick = "mnuHistogramDelete";
        state.ResumeTiming();
        chart.mouseDown({kRightButton, 0, bar.left + 1, bar.top / 2});
    }
    state.counters["left"] = session.grid().rows() - 1;
}
BENCHMARK(deleteBin)->Iterations(74)->Unit(benchmark::kMillisecond);

// The overview from its grey state, as a font's selection paints it. HighlightIncluded starts with
// UpdateCharDisplay.
void repaintOverview(benchmark::State& state) {
    Session session;
    for (auto _ : state) {
        state.PauseTiming();
        for (const auto& cell : session.screen().overview.lblChar) cell->setBackColor(kScrollBarColor);
        state.ResumeTiming();
        session.control->HighlightIncluded("");
    }
}
BENCHMARK(repaintOverview)->Unit(benchmark::kMillisecond);

void hoverOverCell(benchmark::State& state) {
    Session session;
    auto& cells = session.screen().overview.lblChar;
    std::size_t next = 0;
    for (auto _ : state) cells[next++ % cells.size()]->mouseMove({0, 0, 60, 60});
    benchmark::DoNotOptimize(cells.front()->toolTip());
}
BENCHMARK(hoverOverCell)->Unit(benchmark::kMillisecond);

// From the click to the last repaint, the image's characters being found in it; the undo that follows is not
// timed.
void include(benchmark::State& state) {
    Session session(kMostSamples - std::string(kIncluded).size());
    const std::unique_ptr<QWidget> view(make(session.grid(), nullptr));
    if (state.range(0)) session.clickHeading(1);
    session.screen().sample.txtSampleInput.setText(kIncluded);
    const GreyImage image = drawn({kIncluded});
    std::string message;
    for (auto _ : state) {
        state.PauseTiming();
        session.tool->setImage(image);
        state.ResumeTiming();
        session.screen().sample.cmdInclude.press();
        state.PauseTiming();
        message = session.screen().sbr.panel("Message").text();
        session.screen().overview.tlbChars.button("Undo").press();
        state.ResumeTiming();
    }
    if (message != "20 samples included.") state.SkipWithError(message.c_str());
}
BENCHMARK(include)->ArgName("sorted")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace dravik

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
}
