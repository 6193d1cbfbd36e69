// The article list as a user works with it: taking a row over into the receipt, editing, deleting.
#include <QAction>
#include <QItemSelectionModel>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <algorithm>
#include <gtest/gtest.h>

#include "app/TextFile.h"
#include "tests/app/TempFolder.h"
#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/lists/Autocompletion.h"
#include "ui/lists/ListPart.h"
#include "ui/lists/ListWindow.h"

namespace zw {
namespace {

using F = FormElement;

class ListWindowTest : public test::StartedWindow<installListWindows>
{
protected:
    ListWindowTest()
    {
        window->findChild<QPushButton*>("Command2")->click();
        articles = window->findChild<ListWindow*>("artikel_fuer");
    }

    void trigger(const char* key) { articles->findChild<QAction*>(key)->trigger(); }

    ListWindow* articles = nullptr;
};

TEST_F(ListWindowTest, TakesARowOverAsGrossEditsAndDeletesWithTheFileFollowingAtOnce)
{
    ASSERT_NE(articles, nullptr);
    QTableView* grid = articles->grid();
    grid->setCurrentIndex(grid->model()->index(1, 0)); // "Beratung und Planung (1 Stunde);95,00;19"
    articles->findChild<QRadioButton*>("xpOption1")->setChecked(true);
    trigger("hinzu_bar");
    EXPECT_EQ(form.text(F::Text7), "Beratung und Planung (1 Stunde)");
    EXPECT_EQ(form.text(F::Text10), "79,83") << "taken as gross";
    EXPECT_TRUE(articles->isVisible());

    const auto file = paths.dataFile("artikel_fuer.txt");
    grid->model()->setData(grid->model()->index(0, 0), "Kopierpapier");
    EXPECT_TRUE(readFileBytes(file).starts_with("Kopierpapier;23,8;19\r\n"));

    // Two rows selected: the warning with the count; "No" keeps both.
    grid->selectionModel()->select(grid->model()->index(0, 0),
                                   QItemSelectionModel::Select | QItemSelectionModel::Rows);
    grid->selectionModel()->select(grid->model()->index(1, 0),
                                   QItemSelectionModel::Select | QItemSelectionModel::Rows);
    {
        test::ModalCloser no;
        trigger("grid_weg");
        EXPECT_EQ(no.keys, std::vector<QString>{"Löschen: Ja / Nein"}) << "the grid's own yes/no question";
        EXPECT_EQ(no.messages, std::vector<QString>{"Löschen: Achtung!\nEs sind 2 Datensätze selektiert.\nAlle "
                                                    "selektierten Datenzeilen löschen?"});
    }
    EXPECT_EQ(articles->table().rowCount(), 4);
}

// A row taken over runs the fields' change event as typing does: "Mü" of the payer list completes from the
// autocompletion's list.
using TakeOverWithCompletionTest = test::StartedWindow<installListWindows, installAutocompletion>;

TEST_F(TakeOverWithCompletionTest, ATakenOverPayerIsCompletedAsTyping)
{
    test::writeBytes(paths.dataFile("von_liste.txt"), "M\xFC;Bonn\r\n"); // Windows-1252 on disk
    window->findChild<QPushButton*>("Command3")->click();
    auto* payers = window->findChild<ListWindow*>("von_liste");
    ASSERT_NE(payers, nullptr);
    payers->grid()->setCurrentIndex(payers->grid()->model()->index(0, 0));
    payers->findChild<QAction*>("hinzu_bar")->trigger();
    EXPECT_EQ(form.text(F::Text5), "Müller GmbH");
    EXPECT_EQ(form.text(F::Text6), "Bonn");
}

// "Datensatz hinzufügen" opens a row for typing; the file gets it once something was typed into it.
TEST_F(ListWindowTest, ANewRowReachesTheFileOnlyOnceTypedInto)
{
    const auto file = paths.dataFile("artikel_fuer.txt");
    const std::string before = readFileBytes(file);
    trigger("neu_grid");
    EXPECT_EQ(readFileBytes(file), before);
    QTableView* grid = articles->grid();
    grid->model()->setData(grid->model()->index(articles->table().rowCount() - 1, 0), "Ordner");
    const std::string after = readFileBytes(file);
    EXPECT_TRUE(after.ends_with("\r\nOrdner;;\r\n")) << after;
    EXPECT_EQ(std::count(after.begin(), after.end(), '\n'), std::count(before.begin(), before.end(), '\n') + 1);
}

} // namespace
} // namespace zw
