#include "app/mac_station.h"

#include "control/firmcast_form.h"
#include "mac/dame_mac_address.h"
#include "mac/mac_tables.h"
#include "platform/odbc_ini.h"

namespace fc {

MacStation::MacStation(Services& services)
    : c{services, fileSystem, kernel, calendar, databases},
      m{c, odbc, kOrigenMac, nullptr, nullptr} {
    // The driver manager reads the data sources at the first connection.
    defaultOdbcIni(services.programFolder);
}

void MacStation::wire(Firmcast& form) {
    m.descargaPrincipal = [&form] { form.unload(); };
    form.hooks().DameMACAddress = [this](Firmcast&) { return DameMACAddress(m); };
}

}  // namespace fc
