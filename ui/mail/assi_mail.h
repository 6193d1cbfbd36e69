#pragma once

#include "mail/MailDraft.h"
#include "ui/mail/MailControls.h"
#include "ui/mail/WizardDialog.h"

namespace zw {

// "Assistent": the account in three pages; writes the settings and the mail window's fields only on Finish.
class assi_mail : public WizardDialog
{
public:
    assi_mail(const MailAccount& account, QWidget* parent);
    MailAccount account() const;

private:
    void finish() override { accept(); }
    AccountFields m_fields;
};

} // namespace zw
