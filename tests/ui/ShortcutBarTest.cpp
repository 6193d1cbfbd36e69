#include <QAction>
#include <QLabel>
#include <QLayout>
#include <QMenu>
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>

#include "ui/frame/ShortcutBar.h"

namespace zw {
namespace {

using P = ShortcutPanel;

QStringList namesOf(const QLayout& column)
{
    QStringList names;
    for (int i = 0; i < column.count(); ++i) {
        if (QWidget* control = column.itemAt(i)->widget())
            names << control->objectName();
    }
    return names;
}

QWidget* named(const char* name)
{
    auto* control = new QLabel;
    control->setObjectName(name);
    return control;
}

// Parts join in the program's order of the moment; the bar must look the same in every one.
TEST(ShortcutBarTest, PanelsKeysAndTwinsKeepTheirPlacesWhateverOrderThePartsJoinIn)
{
    const std::vector<std::function<void(ShortcutBar&)>> parts = {
        [](ShortcutBar& bar) { bar.addPanel(P::Books, "books", "Buchhaltung"); },
        [](ShortcutBar& bar) { bar.addKey({P::Lists, 60}, "mail", "", [] {}, ToolbarTwin{"mailTwin", "", 25}); },
        [](ShortcutBar& bar) { bar.addKey({P::Lists, 10}, "from", "", [] {}, ToolbarTwin{"fromTwin", "", 20}); },
        [](ShortcutBar& bar) { bar.addKey({P::ReceiptPrint, 30}, "print", "", [] {}); },
    };
    std::vector<std::size_t> order = {0, 1, 2, 3};
    do {
        SCOPED_TRACE(::testing::PrintToString(order));
        QWidget window;
        ShortcutBar bar(&window);
        bar.addPanel(P::Lists, "lists", "Kunden- und Artikelliste");
        bar.addPanel(P::ReceiptPrint, "print", "Belegdruck");
        bar.addControl({P::ReceiptPrint, 20}, named("layout"));
        bar.addControl({P::ReceiptPrint, 40}, named("rounding"));
        bar.addControl({P::Lists, 70}, named("calendar"));
        bar.addToolbarSeparator(10);
        for (std::size_t part : order)
            parts[part](bar);
        ASSERT_EQ(bar.count(), 3);
        EXPECT_EQ(bar.itemText(0), "Belegdruck");
        EXPECT_EQ(bar.itemText(1), "Buchhaltung");
        EXPECT_EQ(bar.itemText(2), "Kunden- und Artikelliste");
        EXPECT_EQ(bar.currentIndex(), 0);
        EXPECT_EQ(namesOf(*bar.widget(0)->layout()), QStringList({"layout", "print", "rounding"}));
        EXPECT_EQ(namesOf(*bar.widget(2)->layout()), QStringList({"from", "mail", "calendar"}));
        QStringList entries;
        for (QAction* entry : bar.toolbarMenu()->actions())
            entries << (entry->isSeparator() ? "-" : entry->objectName());
        EXPECT_EQ(entries, QStringList({"-", "fromTwin", "mailTwin"}));
    } while (std::next_permutation(order.begin(), order.end()));
}

} // namespace
} // namespace zw
