#include "AccessPointDialog.h"

#include "DialogParts.h"
#include "ExtendDialog/ExtendDialog.h"
#include "support/AccessPoint.h"
#include "support/Dialog.h"
#include "support/Look.h"
#include "support/Secret.h"
#include "support/Text.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

constexpr int Width = 400;

class AccessPointDialog : public ExtendDialog
{
public:
    AccessPointDialog(const Modem& modem, QWidget* parent);
    ~AccessPointDialog() override { wipe(m_password); }

private:
    QWidget* makeContent();
    QWidget* makeFields();
    void showStored();
    void enable();
    void save();

    const Modem m_modem;
    QRadioButton* m_automatic = new QRadioButton;
    QRadioButton* m_manual = new QRadioButton;
    QCheckBox* m_homeOnly = new QCheckBox;
    QPushButton* m_save = new QPushButton;
    QWidget* m_fields = nullptr;
    QLineEdit* m_name = nullptr;
    QLineEdit* m_user = nullptr;
    QLineEdit* m_password = nullptr;
};

AccessPointDialog::AccessPointDialog(const Modem& modem, QWidget* parent)
    : ExtendDialog(parent, Qt::WindowCloseButtonHint, enWidgetFixed)
    , m_modem(modem)
{
    setAttribute(Qt::WA_DeleteOnClose);
    QWidget* const content = makeContent();
    keepTranslated(this, [this] {
        setWindowTitle(text("IDS_CONN_ACCESS_POINT"));
        m_automatic->setText(text("IDS_CONN_AUTOMATIC"));
        m_manual->setText(text("IDS_CONN_MANUAL"));
        m_homeOnly->setText(text("IDS_CONN_HOME_ONLY"));
    });
    connect(m_manual, &QRadioButton::toggled, this, [this] { enable(); });
    connect(m_name, &QLineEdit::textChanged, this, [this] { enable(); });
    connect(m_save, &QPushButton::clicked, this, [this] { save(); });
    showStored();
    fillDialog(this, content);
}

QWidget* AccessPointDialog::makeContent()
{
    auto* content = new QWidget;
    content->setMinimumWidth(Width);
    m_fields = makeFields();
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(Look::Margin, Look::Gap * 2, Look::Margin, Look::Gap * 2);
    layout->setSpacing(Look::Gap);
    layout->addWidget(m_automatic);
    layout->addWidget(m_manual);
    auto* indented = new QHBoxLayout;
    indented->addSpacing(Look::Margin); // mirrored, unlike margins
    indented->addWidget(m_fields);
    layout->addLayout(indented);
    layout->addSpacing(Look::Gap);
    layout->addWidget(m_homeOnly);
    layout->addSpacing(Look::Gap);
    layout->addLayout(makeButtons(this, m_save, "IDS_CONN_SAVE"));
    return content;
}

QWidget* AccessPointDialog::makeFields()
{
    auto* fields = new QWidget;
    auto* column = new QVBoxLayout(fields);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Look::Gap);
    m_name = addField(column, "IDS_CONN_ACCESS_POINT_NAME");
    m_user = addField(column, "IDS_CONN_USER");
    m_password = addField(column, "IDS_CONN_PASSWORD");
    m_password->setEchoMode(QLineEdit::Password);
    return fields;
}

void AccessPointDialog::showStored()
{
    const AccessPoint stored = AccessPoint::load(m_modem);
    m_name->setText(stored.name);
    m_user->setText(stored.user);
    m_password->setText(stored.password(m_modem)); // shares the characters, which are wiped at the end
    m_homeOnly->setChecked(stored.isHomeOnly);
    (stored.name.isEmpty() ? m_automatic : m_manual)->setChecked(true);
    enable();
}

void AccessPointDialog::enable()
{
    m_fields->setEnabled(m_manual->isChecked());
    m_save->setEnabled(m_automatic->isChecked() || !m_name->text().trimmed().isEmpty());
}

void AccessPointDialog::save()
{
    AccessPoint chosen;
    if (m_manual->isChecked()) {
        chosen.name = m_name->text().trimmed();
        chosen.user = m_user->text();
        chosen.setPassword(m_modem, m_password->text());
    }
    chosen.isHomeOnly = m_homeOnly->isChecked();
    chosen.save(m_modem);
    accept();
}

} // namespace

void showAccessPoint(const Modem& modem, QWidget* parent, const std::function<void()>& saved)
{
    auto* dialog = new AccessPointDialog(modem, parent);
    QObject::connect(dialog, &QDialog::accepted, dialog, saved);
    dialog->open();
}
