#include "DraftKeeper.h"

#include "Message.h"

namespace {

constexpr int KeepAfter = 1000; // milliseconds

} // namespace

DraftKeeper::DraftKeeper(Drafts* drafts, const Draft& kept)
    : m_drafts(drafts)
    , m_written(kept)
    , m_kept(kept)
{
    m_delay.setSingleShot(true);
    m_delay.setInterval(KeepAfter);
    QObject::connect(&m_delay, &QTimer::timeout, &m_delay, [this] { keep(); });
}

DraftKeeper::~DraftKeeper()
{
    if (m_delay.isActive())
        keep();
}

void DraftKeeper::follow(const Draft& written)
{
    m_written = written;
    if (written.recipient != m_kept.recipient || written.text != m_kept.text)
        m_delay.start();
}

void DraftKeeper::keep()
{
    m_delay.stop();
    if (addressKey(m_kept.recipient) != addressKey(m_written.recipient))
        m_drafts->keep({m_kept.recipient, QString()});
    m_kept = m_written;
    m_drafts->keep(m_kept);
}

void DraftKeeper::drop()
{
    m_delay.stop();
    m_drafts->keep({m_kept.recipient, QString()});
    m_kept = m_written; // else it would be saved once more
}
