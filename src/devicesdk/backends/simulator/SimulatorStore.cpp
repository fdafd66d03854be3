#include "backends/simulator/SimulatorStore.h"

#include "backends/simulator/SimulatorFile.h"
#include "files/FileAccess.h"
#include "files/IniDocument.h"
#include "files/KnownFile.h"

using namespace std::chrono_literals;
using FileAccess::Content;

namespace {

constexpr auto LockPatience = 5s;

bool isValid(const IniDocument& document, QString& error)
{
    QStringList errors;
    SimulatorFile::read(document, errors);
    error = errors.value(0);
    return errors.isEmpty();
}

bool changeLocked(const QStringList& files, bool mayCreate, const SimulatorStore::Edit& edit, QString& error)
{
    const Content content = KnownFile(files).look().value_or(Content());
    if (content.status == Content::Unreadable) {
        error = QStringLiteral("it cannot be read");
        return false;
    }
    if (content.status == Content::Missing && !mayCreate) {
        error = QStringLiteral("there is no such file");
        return false;
    }
    IniDocument document(content.bytes);
    if (!isValid(document, error) || !edit(document, error) || !isValid(document, error))
        return false;
    return FileAccess::replace(files.first(), document.toBytes(), error);
}

} // namespace

bool SimulatorStore::change(const QStringList& files, bool mayCreate, const Edit& edit, QString& error)
{
    FileAccess::ProcessLock lock(files.first());
    if (lock.lock(LockPatience))
        return changeLocked(files, mayCreate, edit, error);
    error = lock.errorString();
    return false;
}
