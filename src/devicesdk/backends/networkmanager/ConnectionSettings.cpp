#include "backends/networkmanager/ConnectionSettings.h"

#include "devices/Request.h"

VariantMaps ConnectionSettings::newFor(const Request& request, const QString& password)
{
    const QVariantMap connection = {{QStringLiteral("id"), QStringLiteral("Skylume")},
                                    {QStringLiteral("type"), QStringLiteral("gsm")},
                                    {QStringLiteral("autoconnect"), false}};
    QVariantMap gsm = {{QStringLiteral("home-only"), request.isHomeOnly}};
    if (request.target.isEmpty())
        gsm.insert(QStringLiteral("auto-config"), true);
    else
        gsm.insert(QStringLiteral("apn"), request.target);
    if (!request.text.isEmpty())
        gsm.insert(QStringLiteral("username"), request.text);
    if (!password.isEmpty())
        gsm.insert(QStringLiteral("password"), password);
    return {{QStringLiteral("connection"), connection}, {QStringLiteral("gsm"), gsm}};
}
