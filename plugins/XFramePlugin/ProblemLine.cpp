#include "ProblemLine.h"

#include "PluginContainer/PluginContainer.h"
#include "PluginStatusText.h"
#include "Startup/Startup.h"
#include "support/Look.h"
#include "support/Modems.h"
#include "support/Text.h"

#include <QHBoxLayout>
#include <QLabel>

namespace {

QStringList problems()
{
    QStringList lines;
    if (!serviceValue(QStringLiteral("settings-problem")).isEmpty())
        lines.append(text("IDS_NOTICE_SETTINGS"));
    if (const auto* container = dynamic_cast<PluginContainer*>(Startup::GetPluginContainer())) {
        const ConfigurationFaultList faults = container->GetConfigurationFaults();
        for (const ConfigurationFault& fault : faults)
            lines.append(describeFault(fault));
    }
    return lines;
}

} // namespace

ProblemLine::ProblemLine(QWidget* parent)
    : QWidget(parent)
    , m_label(Look::errorLabel())
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(Look::Gap * 2, Look::Gap, Look::Gap * 2, Look::Gap);
    layout->addWidget(m_label);
    keepTranslated(m_label, [this] { refresh(); });
}

void ProblemLine::refresh()
{
    const QStringList lines = problems();
    m_label->setText(lines.join(QLatin1Char('\n')));
    setVisible(!lines.isEmpty());
}
