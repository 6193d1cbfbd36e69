#include "ui/ledger/LedgerModel.h"

#include "ui/frame/QtText.h"

#include <QColor>
#include <QFont>

#include "ledger/ReceiptLedger.h"

namespace zw {
namespace {

// The grid's colour values are 0xBBGGRR.
QColor gridColour(int value) { return QColor(value & 0xFF, (value >> 8) & 0xFF, (value >> 16) & 0xFF); }

} // namespace

LedgerModel::LedgerModel(ReceiptLedger& ledger, QObject* parent) : QAbstractTableModel(parent), m_ledger(ledger)
{
    ledger.addListener([this](const LedgerChange& change, LedgerPhase phase) {
        const int row = static_cast<int>(change.row);
        const int last = static_cast<int>(change.row + change.count) - 1;
        switch (change.kind) {
        case LedgerChange::Kind::Reset:
            phase == LedgerPhase::Before ? beginResetModel() : endResetModel();
            break;
        case LedgerChange::Kind::Insert:
            phase == LedgerPhase::Before ? beginInsertRows({}, row, last) : endInsertRows();
            break;
        case LedgerChange::Kind::Remove:
            phase == LedgerPhase::Before ? beginRemoveRows({}, row, last) : endRemoveRows();
            break;
        case LedgerChange::Kind::Cell:
            if (phase == LedgerPhase::After)
                emit dataChanged(index(row, change.column), index(row, change.column));
            break;
        case LedgerChange::Kind::Columns:
            break;
        }
    });
}

int LedgerModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_ledger.rowCount());
}

int LedgerModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kLedgerColumnCount; }

QVariant LedgerModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const auto row = static_cast<std::size_t>(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: {
        const std::string_view text = m_ledger.cell(row, index.column());
        if (text.find(kLiteralTab) == std::string_view::npos)
            return qt(text);
        return qt(text).replace(qt(kLiteralTab), QStringLiteral("\t"));
    }
    case Qt::ForegroundRole:
        if (int colour = m_ledger.cellColour(row, index.column()))
            return gridColour(colour);
        return {};
    case Qt::FontRole:
        if (m_ledger.cellColour(row, index.column()) != 0) {
            QFont bold;
            bold.setBold(true);
            return bold;
        }
        return {};
    case Qt::TextAlignmentRole: {
        const int code = ledgerColumns()[static_cast<std::size_t>(index.column())].alignment;
        const Qt::Alignment horizontal = code == 1 ? Qt::AlignRight : code == 2 ? Qt::AlignHCenter : Qt::AlignLeft;
        return QVariant::fromValue(horizontal | Qt::AlignVCenter);
    }
    default:
        return {};
    }
}

QVariant LedgerModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    if (section < 0 || section >= kLedgerColumnCount)
        return {};
    return qt(ledgerColumns()[static_cast<std::size_t>(section)].caption);
}

Qt::ItemFlags LedgerModel::flags(const QModelIndex& index) const
{
    return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
}

bool LedgerModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    // A TAB in a cell is part of its text, not a new cell.
    const std::string text = value.toString().replace(QStringLiteral("\t"), qt(kLiteralTab)).toStdString();
    if (cellEdited)
        cellEdited(static_cast<std::size_t>(index.row()), index.column(), text);
    return true;
}

} // namespace zw
