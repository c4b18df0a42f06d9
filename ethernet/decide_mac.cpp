// The MAC decision after the end of the load: a scale whose address is not
// of the maker's range yet gets the next one from the database, in a 0x68
// message sent right after; a scale with one of ours keeps it.
#include "ethernet/address_table.h"
#include "ethernet/envia_mensajes.h"
#include "ethernet/ethernet_panel.h"
#include "ethernet/scale_turn.h"
#include "firmware/hex_text.h"
#include "firmware/message_fields.h"
#include "platform/controls.h"
#include "platform/dialogs.h"
#include "platform/socket_state.h"
#include "platform/tcp_socket.h"

namespace fc {

namespace {

constexpr const char* kPrefijoPropio = "02C0DE";

MensajeEth mensajeMac(EthernetPanel& p) {
    MensajeEth m = mensajeDeControl(tipo_msg::kMac);
    m.datos = DameHex(p.mac_actual, p.dialogs);
    m.datos += std::string(kLongitudMensaje - p.mac_actual.size() / 2, '0');
    return m;
}

void fallaSinMac(EthernetPanel& p, int i) {
    p.pide_mac = kFalse;
    p.estado_balanzas[i] = false;
}

void pideMacNueva(EthernetPanel& p, int i) {
    p.mac_actual = p.DameMACAddress ? p.DameMACAddress() : std::string();
    if (p.mac_actual.empty()) {
        p.dialogs.msgBox("There is no more MACs available");
        fallaSinMac(p, i);
        return;
    }
    p.mensajes.push_back(mensajeMac(p));
    p.pide_mac = kTrue;
}

}  // namespace

void DecideMac(EthernetPanel& p, int i) {
    if (p.chkADSL.value() != 0 || p.nivel < 0 || p.nivel > 2) {
        p.pide_mac = kFalse;
        return;
    }
    std::string mac;
    if (!DameMacDeTabla(p.red, p.lista_balanzas[i], mac)) {
        fallaSinMac(p, i);
        return;
    }
    p.mac_tabla = mac;
    const bool nuestra = mac.compare(0, 6, kPrefijoPropio) == 0;
    if (!nuestra && p.WsckCliente.state() == sck::kConnected) {
        pideMacNueva(p, i);
    } else if (!nuestra) {
        // Not ours, and the socket has gone: it cannot be given one.
        p.dialogs.msgBox(TextoBalanza(p, i) + ". Error while sending MAC Address.", mb::kCritical,
                         kAppTitle);
        fallaSinMac(p, i);
    } else {
        p.mac_actual = mac;
        p.pide_mac = kFalse;
    }
}

}  // namespace fc
