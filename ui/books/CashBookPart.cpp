#include "ui/books/CashBookPart.h"

#include <QObject>
#include <QTimer>

#include "app/FaultReporter.h"
#include "books/CashBook.h"
#include "core/RunError.h"
#include "print/ArchivePdf.h"
#include "ui/books/DailyCloseWindow.h"
#include "ui/books/JournalWindow.h"
#include "ui/books/OutsideChangeNotice.h"
#include "ui/frame/MessageDialog.h"
#include "ui/frame/PartContext.h"
#include "ui/frame/Quittung.h"

namespace zw {
namespace {

// The cash book of the program folder and the archive's writer, kept as long as the window.
class CashBookPart : public QObject
{
public:
    explicit CashBookPart(const PartContext& context)
        : QObject(&context.window), m_window(context.window), m_paths(context.paths), m_book(m_paths),
          m_writer(context.window.capture())
    {
        m_window.setCommand("tagesabschluss", [this] { m_window.openWindow("tagesabschluss"); });
        m_window.setWindowOpener("tagesabschluss", [this] {
            DailyCloseWindow window(&m_window, m_book, m_writer);
            window.exec();
        });
        m_window.setCommand("aenderungsprotokoll", [this] { m_window.openWindow("aenderungsprotokoll"); });
        // Once the window stands, a ledger changed outside since the last run is journaled and told.
        QTimer::singleShot(0, this, [this] { catchUp(); });
        m_window.setWindowOpener("aenderungsprotokoll", [this] {
            JournalWindow window(&m_window, m_paths);
            window.exec();
        });
    }

private:
    void catchUp()
    {
        try {
            if (m_book.catchUpNow())
                MessageDialog::messageBox(&m_window, kOutsideChangeNotice, MessageStyle::Warning, "Belegliste");
        } catch (const RunError& error) {
            m_window.faultReporter().report(error, "Quittung");
        }
    }

    Quittung& m_window;
    const ProgramPaths& m_paths;
    CashBook m_book;
    ArchivePdf m_writer;
};

} // namespace

void installCashBook(const PartContext& context) { new CashBookPart(context); }

} // namespace zw
