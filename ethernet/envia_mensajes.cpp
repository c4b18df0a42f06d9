#include "ethernet/envia_mensajes.h"

#include "ethernet/address_table.h"
#include "ethernet/ethernet_panel.h"
#include "ethernet/scale_turn.h"
#include "ethernet/socket_close.h"
#include "platform/controls.h"
#include "platform/dialogs.h"
#include "platform/socket_state.h"
#include "platform/tcp_socket.h"

namespace fc {

namespace {

int cuantas(const EthernetPanel& p) {
    return static_cast<int>(p.lista_balanzas.size());
}

// Every other scale's row of the address table goes, so that what the PC
// learnt of them cannot stand for this one. (The table is cleared whole.)
void borraLasDemas(EthernetPanel& p, int i) {
    for (int j = 0; j < cuantas(p); ++j) {
        if (j != i)
            BorrarTablaARP(p.red, p.lista_balanzas[j]);
    }
}

void preparaBarra(EthernetPanel& p) {
    p.lblInformacion.setCaption("1");
    p.BarraEth.setMin(0);
    p.BarraEth.setValue(0);
    // Taken before any 0x68 is added: that message doesn't move the bar on.
    p.BarraEth.setMax(static_cast<Long>(p.mensajes.size()) - 1);
    p.BarraEth.setVisible(true);
    p.pide_mac = kFalse;
}

void cierraSiAbierto(EthernetPanel& p) {
    if (p.WsckCliente.state() > sck::kClosed)
        CerrarSocket(p.red, p.WsckCliente);
}

// The scale record form, at the production level for every good scale and
// elsewhere for a scale that has just been given a MAC. The 0x68 message of
// this scale goes afterwards. Returns whether it removed one.
bool registraBalanza(EthernetPanel& p, int i) {
    if (!p.pide_mac && p.nivel != 1)
        return false;
    if (p.paradibu)
        p.paradibu();
    p.BarraEth.setVisible(false);
    p.balanza_actual = static_cast<Integer>(i);
    if (p.frmDatosBalanza)
        p.frmDatosBalanza();
    if (!p.pide_mac)
        return false;
    p.mensajes.pop_back();
    return true;
}

// A good scale: its icon, the checksum, the socket closed, the record form.
bool terminaBuena(EthernetPanel& p, int i) {
    p.lstBalanzas.setSmallIcon(i, kIconoEnviado);
    EsperaChecksum(p, i);
    cierraSiAbierto(p);
    return registraBalanza(p, i);
}

// A failed scale: its icon, and its 0x68 message taken back unless the
// record form's end already did (a checksum failure after the form).
void terminaFallida(EthernetPanel& p, int i, bool macQuitada) {
    cierraSiAbierto(p);
    p.lstBalanzas.setSmallIcon(i, kIconoFallo);
    if (p.pide_mac && !macQuitada) {
        p.mensajes.pop_back();
        p.dialogs.msgBox(TextoBalanza(p, i) + ". Error while sending MAC Address.", mb::kCritical,
                         kAppTitle);
    }
}

void cargaBalanza(EthernetPanel& p, int i) {
    p.mac_tabla.clear();
    if (p.balanzaEmpieza)
        p.balanzaEmpieza(i);
    borraLasDemas(p, i);
    ConectaBalanza(p, i);
    preparaBarra(p);
    if (p.estado_balanzas[i])
        EnviaTodos(p, i);
    bool macQuitada = false;
    if (p.estado_balanzas[i])
        macQuitada = terminaBuena(p, i);
    if (!p.estado_balanzas[i])
        terminaFallida(p, i, macQuitada);
    if (p.estado_balanzas[i])
        p.lblInformacion.setCaption(TextoBalanza(p, i) + " loaded OK");
    p.lstBalanzas.setSelectedRow(i);
    if (p.balanzaTerminada)
        p.balanzaTerminada(i);
}

}  // namespace

std::string TextoBalanza(const EthernetPanel& p, int i) {
    return "Scale " + std::to_string(i + p.primera_balanza);
}

std::string TextoMensaje(const MensajeEth& mensaje) {
    return mensaje.tipo + mensaje.direccion + mensaje.numero + mensaje.datos;
}

void EnviaMensajes(EthernetPanel& p) {
    for (int i = 0; i < cuantas(p); ++i) {
        p.estado_balanzas[i] = true;
        BorrarTablaARP(p.red, p.lista_balanzas[i]);
    }
    for (int i = 0; i < cuantas(p); ++i) cargaBalanza(p, i);
}

}  // namespace fc
