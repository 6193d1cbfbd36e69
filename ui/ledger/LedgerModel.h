#pragma once

#include <QAbstractTableModel>
#include <functional>

namespace zw {

class ReceiptLedger;

// The grid Grid1 over the ReceiptLedger: cells are read from the ledger's row buffer when shown, so a million rows
// cost no more than the ledger itself. The amount cells coloured at load are shown in their colour and bold.
class LedgerModel : public QAbstractTableModel
{
public:
    LedgerModel(ReceiptLedger& ledger, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    // The end of an in-place edit; the ledger commands save there.
    std::function<void(std::size_t row, int column, const std::string& value)> cellEdited;

private:
    ReceiptLedger& m_ledger;
};

} // namespace zw
