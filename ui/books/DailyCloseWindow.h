#pragma once

#include <QDialog>
#include <array>
#include <optional>
#include <string>

#include "books/CashBook.h"
#include "core/FormHost.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace zw {

class DocumentWriter;

// "Tagesabschluss": the figures of the day, the count sheet from 500 EUR to 1 cent, the difference with its note,
// the private rows and the close itself.
class DailyCloseWindow : public QDialog
{
public:
    DailyCloseWindow(QWidget* parent, CashBook& book, const DocumentWriter& writer);

    QLineEdit* dayField() const { return m_day; }
    QLineEdit* countField(std::size_t index) const { return m_counts.at(index); }
    QLineEdit* noteField() const { return m_note; }
    QLabel* expectedLabel() const { return m_expected; }
    QLabel* differenceLabel() const { return m_difference; }
    QPushButton* closeButton() const { return m_closeDay; }

    // Reads the ledger and the last close again for the typed day.
    void refresh();
    // The counts changed: the counted cash and the difference follow.
    void recount();
    void closeDay();
    void privateRow(JournalOperation operation);

private:
    void message(const std::string& text, MessageStyle style);
    void tellOutsideChange(bool changed);

    CashBook& m_book;
    const DocumentWriter& m_writer;
    ReceiptLedger m_ledger;
    std::optional<CloseFigures> m_figures;
    std::string m_refusal; // why the day cannot be closed
    QLineEdit* m_day = nullptr;
    std::array<QLabel*, 4> m_figureLabels{};
    QLabel* m_expected = nullptr;
    std::array<QLineEdit*, kDenominations.size()> m_counts{};
    std::array<QLabel*, kDenominations.size()> m_countAmounts{};
    QLabel* m_counted = nullptr;
    QLabel* m_difference = nullptr;
    QLabel* m_problem = nullptr;
    QLineEdit* m_note = nullptr;
    QPushButton* m_closeDay = nullptr;
};

} // namespace zw
