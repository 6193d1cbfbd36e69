#pragma once

#include <QDialog>
#include <string>
#include <vector>

class QLineEdit;

namespace zw {

// "Adressbuch": one contact, added or changed.
class adressbuch1 : public QDialog
{
public:
    enum class Purpose { Add, Edit };
    adressbuch1(Purpose purpose, const std::vector<std::string>& fields, QWidget* parent);
    std::vector<std::string> fields() const;

private:
    std::vector<QLineEdit*> m_fields;
};

} // namespace zw
