#pragma once

#include <QString>
#include <QToolBox>
#include <functional>
#include <map>
#include <optional>
#include <vector>

class QAction;
class QLayout;
class QMenu;
class QPushButton;
class QVBoxLayout;

namespace zw {

// The bar's panels from the top: "Belegdruck", "Druckeinstellungen", "Belegeinstellungen", "Buchhaltung",
// "Kunden- und Artikelliste". The part that owns a panel adds it; others may put keys on it.
enum class ShortcutPanel { ReceiptPrint, PrintSetup, ReceiptSettings, Books, Lists };

// Where a control sits: its panel, and its row there, counted from the top with gaps left for later rows.
struct ShortcutPlace
{
    ShortcutPanel panel;
    int row;
};

// A key's twin in the toolbar's drop-down "Weitere Funktionen", at its place among the entries there.
struct ToolbarTwin
{
    QString name;
    QString caption;
    int place;
};

// The shortcut bar ShortcutBar1. Panels and their controls take their places whatever order the parts join in.
// It also holds the toolbar's drop-down, since the keys' twins live there.
class ShortcutBar : public QToolBox
{
public:
    explicit ShortcutBar(QWidget* parent);

    // A panel at its place; the owner fills it through addControl.
    QWidget* addPanel(ShortcutPanel panel, const QString& name, const QString& title);
    void addControl(ShortcutPlace place, QWidget* control);
    void addControl(ShortcutPlace place, QLayout* row);
    // A key that runs its handler under the common error trap, and its twin in the toolbar's drop-down.
    QPushButton* addKey(ShortcutPlace place, const QString& name, const QString& caption,
                        std::function<void()> handler, std::optional<ToolbarTwin> twin = std::nullopt);

    // The drop-down "Weitere Funktionen" of the toolbar, whose entries are ordered by their places.
    QMenu* toolbarMenu() const { return m_toolbarMenu; }
    void addToolbarEntry(int place, QAction* entry);
    void addToolbarSeparator(int place);

    // The button style chosen in the menu reaches the keys that take it.
    void takeButtonStyle(QPushButton* key);
    void setButtonStyle(const QString& sheet);

private:
    struct Panel
    {
        QWidget* widget = nullptr;
        QVBoxLayout* layout = nullptr;
        std::vector<int> rows;
    };
    int claimRow(ShortcutPlace place);
    void fitWidth();

    std::map<ShortcutPanel, Panel> m_panels;
    QMenu* m_toolbarMenu = nullptr;
    std::vector<int> m_toolbarPlaces;
    std::vector<QPushButton*> m_styledKeys;
    QString m_buttonStyle;
};

} // namespace zw
