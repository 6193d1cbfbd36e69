#pragma once

#include <QDialog>
#include <QString>
#include <initializer_list>
#include <vector>

class QLabel;
class QPushButton;
class QStackedWidget;
class QVBoxLayout;

namespace zw {

// The pages of a wizard with its back and next keys; the next key's caption on the last page is `lastCaption`,
// and a click there runs finish().
class WizardDialog : public QDialog
{
protected:
    WizardDialog(QWidget* parent, const char* lastCaption);
    // A page; with a step ("Schritt 1 von 2") the page starts with it in bold and the text below.
    QVBoxLayout* addPage(const char* name, const QString& step = {}, const QString& text = {});
    // A word-wrapped label; the welcome page's heading is bigger and bold.
    static QLabel* wrappedLabel(const char* name, const QString& caption, QWidget* owner);
    static QLabel* welcomeHeading(const QString& caption, QWidget* owner);
    // The pages above, the keys below: `leftKeys` on the left, back, next and cancel on the right.
    void layOut(std::initializer_list<QWidget*> leftKeys, QPushButton* cancel);
    void showPage(int page);
    virtual void finish() = 0;
    virtual void pageShown() {}
    bool onLastPage() const { return m_page + 1 == static_cast<int>(m_pages.size()); }
    QWidget* page(int index) const { return m_pages[static_cast<std::size_t>(index)]; }

    QStackedWidget* m_stack;
    QPushButton* m_back;
    QPushButton* m_next;

private:
    std::vector<QWidget*> m_pages;
    int m_page = 0;
    const char* m_lastCaption;
};

} // namespace zw
