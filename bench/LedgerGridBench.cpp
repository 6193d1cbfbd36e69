#include <benchmark/benchmark.h>

#include <QApplication>
#include <QScrollBar>
#include <QTableView>
#include <filesystem>
#include <fstream>
#include <string>

#include "app/ProgramPaths.h"
#include "ledger/LedgerStore.h"
#include "ledger/ReceiptLedger.h"
#include "ui/ledger/LedgerModel.h"

namespace {

namespace fs = std::filesystem;

QApplication& application()
{
    static int argc = 1;
    static char name[] = "zw_ledger_grid_bench";
    static char* argv[] = {name, nullptr};
    static auto* app = new QApplication(argc, argv);
    return *app;
}

zw::ProgramPaths programFolder(long rows)
{
    const fs::path home = fs::temp_directory_path() / ("zw-ledger-grid-bench-" + std::to_string(rows));
    fs::create_directories(home / "daten");
    const auto file = home / "daten" / "belege.dat";
    if (!fs::exists(file)) {
        std::ofstream out(file, std::ios::binary);
        for (long i = 0; i < rows; ++i)
            out << "12.03.2011;" << i << ";119,00;;EUR;19;100,00;19,00;einhundertneunzehn;Max Muster;;Beratung;Bonn;;"
                << "Quittung\r\n";
    }
    return zw::ProgramPaths(home);
}

// belege.dat into the grid: LoadLedger, the model and the view that shows it, first rows drawn.
void BM_LoadIntoGrid(benchmark::State& state)
{
    application();
    const auto paths = programFolder(state.range(0));
    for (auto _ : state) {
        zw::ReceiptLedger ledger;
        zw::LedgerModel model(ledger, nullptr);
        QTableView view;
        view.setModel(&model);
        view.resize(900, 600);
        zw::loadLedger(ledger, paths);
        view.show();
        QApplication::processEvents();
        benchmark::DoNotOptimize(model.rowCount());
    }
}

// Jumping from the top to the bottom of the grid and back, as dragging the scroll bar does.
void BM_ScrollGrid(benchmark::State& state)
{
    application();
    const auto paths = programFolder(state.range(0));
    zw::ReceiptLedger ledger;
    zw::LedgerModel model(ledger, nullptr);
    QTableView view;
    view.setModel(&model);
    view.resize(900, 600);
    zw::loadLedger(ledger, paths);
    view.show();
    QApplication::processEvents();
    for (auto _ : state) {
        view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
        view.repaint();
        view.verticalScrollBar()->setValue(0);
        view.repaint();
    }
}

} // namespace

BENCHMARK(BM_LoadIntoGrid)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ScrollGrid)->Arg(1000000)->Unit(benchmark::kMillisecond);
