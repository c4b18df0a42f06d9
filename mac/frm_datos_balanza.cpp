#include "mac/frm_datos_balanza.h"

#include <cstdio>

#include "common/common_module.h"
#include "ethernet/address_table.h"
#include "mac/mac_module.h"
#include "mac/mac_tables.h"
#include "mac/mac_text.h"
#include "platform/calendar.h"
#include "platform/dialogs.h"
#include "platform/odbc.h"
#include "platform/runtime_error.h"

namespace fc {

namespace {

constexpr Integer kTeclaEnter = 13;

Dialogs& dialogos(const DatosBalanzaPanel& p) {
    return p.mac.c.services.dialogs;
}

// "hh:mm:ss dd/mm/yyyy"
std::string horaYFecha(const LocalDateTime& t) {
    char texto[32];
    std::snprintf(texto, sizeof texto, "%02d:%02d:%02d %02d/%02d/%04d", t.hour, t.minute, t.second,
                  t.day, t.month, t.year);
    return texto;
}

std::string textoDe(const std::optional<std::string>& campo) {
    return campo.value_or("");
}

// The register's row of the address, as the form reads it: serial, date and
// notes. Empty when the address has no row.
std::vector<OdbcRow> filaDeDireccion(OdbcConnection& bd, const std::string& direccion) {
    return bd.query("SELECT " + bd.quote("Numero_serie") + ", " + bd.quote("fecha_actual") + ", " +
                        bd.quote("Notas") + " FROM " + bd.quote(kTablaDetalleMac) + " WHERE " +
                        bd.quote("Direccio_MAC") + " = ?",
                    {direccion});
}

std::string nivelTexto(Integer nivel, const std::string& comoEsta) {
    switch (nivel) {
        case 0:
            return "DISTRIBUTOR";
        case 1:
            return "PRODUCTION";
        case 2:
            return "ENGINEER";
        default:
            return comoEsta;
    }
}

}  // namespace

frmDatosBalanza::frmDatosBalanza(DatosBalanzaPanel panel) : Screen("frmDatosBalanza"), p_(panel) {
    setCaption("Scale Data");
    setClosable(false);
    Frame1.setCaption("");
    Label1.setCaption("Serial Number");
    Label2.setCaption("MAC Address");
    Label4.setCaption("LEVEL");
    cmdAceptar.setCaption("&Accept");
    txtMAC.setEnabled(false);
    cmdAceptar.onClick = [this] { cmdAceptar_Click(); };
    txtSerialNumber.onKeyPress = [this](Integer& k) { txtSerialNumber_KeyPress(k); };
}

void frmDatosBalanza::Mostrar() {
    load();
    Form_Load();
    if (loaded())
        dialogos(p_).showModal(*this);
}

void frmDatosBalanza::Form_Load() {
    try {
        txtMAC.setText(MacConGuiones(p_.mac_actual));
        leeNumeroSerie();
        muestraNivelYHora();
        pideComprobacion();
        setFocused(&txtSerialNumber);
    } catch (const RuntimeError& error) {
        const std::string causa = std::to_string(error.number()) + " " + error.description();
        CierraBdMac(p_.mac);
        if (error.number() == err::kOdbcFailure) {
            dialogos(p_).msgBox("Problema al acceder a la base de datos de MACs, error: " + causa);
            unload();
            return;
        }
        dialogos(p_).msgBox("Problema al obtener la MAC, error: " + causa);
        throw ProgramEnd{kFinPorBaseMac};
    }
}

// The serial the register holds for the address, if it has a row.
void frmDatosBalanza::leeNumeroSerie() {
    p_.mac.bd_mac = p_.mac.odbc.openConnection(p_.mac.origen);
    auto filas = filaDeDireccion(*p_.mac.bd_mac, txtMAC.text());
    txtSerialNumber.setText(filas.empty() ? "" : textoDe(filas.front().at(0)));
    CierraBdMac(p_.mac);
}

void frmDatosBalanza::muestraNivelYHora() {
    Label4.setCaption(nivelTexto(p_.nivel, Label4.caption()));
    Label5.setCaption(horaYFecha(p_.mac.c.services.calendar.now()));
}

void frmDatosBalanza::pideComprobacion() {
    Dialogs& d = dialogos(p_);
    if (p_.pide_mac) {
        d.msgBox(
            "Check the MAC Address in PC and in the scale's display are the same " + p_.mac_actual,
            mb::kCritical, kAppTitle);
        d.msgBox("Push key 'C' in the scale.", mb::kCritical, kAppTitle);
    } else {
        d.msgBox("Check the Serial Number " + txtSerialNumber.text(), mb::kCritical);
    }
}

// A barcode reader ends its read with Enter, which accepts.
void frmDatosBalanza::txtSerialNumber_KeyPress(Integer& KeyAscii) {
    if (KeyAscii == kTeclaEnter)
        cmdAceptar_Click();
}

void frmDatosBalanza::cmdAceptar_Click() {
    const std::string serie = txtSerialNumber.text();
    if (!serieValida(serie))
        return;
    anotaSerie(serie);
    if (p_.tipo_conexion == 0)
        compruebaBalanza();
    unload();
}

// The three refusals; each leaves the focus in the field.
bool frmDatosBalanza::serieValida(const std::string& serie) {
    Dialogs& d = dialogos(p_);
    if (serie.empty()) {
        d.msgBox("You must enter the Scale\xC2\xB4s serial number");
    } else if (serie.size() > kLargoMaximoSerie) {
        d.msgBox("The length of the serial number must be minor than 26");
    } else if (serie[0] == 'X') {
        // The label's other barcode, not the serial number.
        d.msgBox(
            "Introduce el C\xC3\xB3"
            "digo de Barras de Arriba");
        txtSerialNumber.setText("");
    } else {
        return true;
    }
    setFocused(&txtSerialNumber);
    return false;
}

// The register row of the address gets the serial, the level and the time;
// an address that isn't new keeps its former record in the notes. An
// address without a row leaves no record.
void frmDatosBalanza::anotaSerie(const std::string& serie) {
    p_.mac.bd_mac = p_.mac.odbc.openConnection(p_.mac.origen);
    OdbcConnection& bd = *p_.mac.bd_mac;
    auto filas = filaDeDireccion(bd, txtMAC.text());
    if (!filas.empty()) {
        const OdbcRow& fila = filas.front();
        std::string notas = textoDe(fila.at(2));
        if (!p_.pide_mac)
            notas += "," + textoDe(fila.at(1)) + "," + textoDe(fila.at(0));
        bd.execute("UPDATE " + bd.quote(kTablaDetalleMac) + " SET " + bd.quote("Direccio_MAC") +
                       " = ?, " + bd.quote("Notas") + " = ?, " + bd.quote("Numero_serie") +
                       " = ?, " + bd.quote("Departamento") + " = ?, " + bd.quote("fecha_actual") +
                       " = ? WHERE " + bd.quote("Direccio_MAC") + " = ?",
                   {txtMAC.text(), notas, serie, Label4.caption(), p_.mac.c.services.calendar.now(),
                    txtMAC.text()});
    }
    CierraBdMac(p_.mac);
}

// Over Ethernet the scale must now answer with the address it was given.
void frmDatosBalanza::compruebaBalanza() {
    std::string leida;
    const std::string& ip = p_.lista_balanzas.at(static_cast<std::size_t>(p_.balanza_actual));
    Dialogs& d = dialogos(p_);
    if (DameMacPorPing(p_.red, ip, leida)) {
        if (leida != p_.mac_actual || leida.compare(0, 6, kPrefijoMac) != 0)
            d.msgBox("MAC address not valid " + leida + ". Please, repeat the firmcast.",
                     mb::kCritical, kAppTitle);
    } else {
        d.msgBox("The scale does not answer " + leida, mb::kCritical, kAppTitle);
    }
}

}  // namespace fc
