#include "app/mac_station.h"

#include "control/firmcast_form.h"
#include "control/mac_steps.h"
#include "mac/mac_tables.h"
#include "platform/odbc_ini.h"

namespace fc {

MacStation::MacStation(Firmcast& form) : m{form.common(), odbc, kOrigenMac, nullptr, nullptr} {
    // The driver manager reads the data sources at the first connection.
    defaultOdbcIni(form.services().programFolder);
    m.descargaPrincipal = [&form] { form.unload(); };
    wireMacSteps(form, m);
}

}  // namespace fc
