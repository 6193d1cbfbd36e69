#include "ui/books/YearChartPart.h"

#include <QDate>

#include "ui/books/YearChartWindow.h"
#include "ui/frame/PartContext.h"
#include "ui/frame/Quittung.h"
#include "ui/frame/UserLocale.h"

namespace zw {

// "Auswertung" in the Statistik menu; the window reads the ledger from the program folder when it opens.
void installYearChart(const PartContext& context)
{
    Quittung& window = context.window;
    const ProgramPaths& paths = context.paths;
    window.setCommand("auswertung", [&window] { window.openWindow("auswertung"); });
    window.setWindowOpener("auswertung", [&window, &paths] {
        YearChartWindow chart(&window, paths, window.faultReporter(),
                              {window.fileDialog("auswertung_png"), window.fileDialog("auswertung_pdf")},
                              today(window.clock()).year());
        chart.exec();
    });
}

} // namespace zw
