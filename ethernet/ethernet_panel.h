// What the Ethernet loader uses of the main screen: its two client sockets,
// its timers, the labels, bar and list the operator watches, the scale list
// with its flags, the messages of the file, the checksum they must give, and
// the run state of the MAC step. The screen also lends the three things the
// loader cannot do itself: ask for the next MAC address, show the scale
// record form, and stop the animation before that form.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ethernet/respuesta_balanza.h"
#include "firmware/mensaje_eth.h"
#include "platform/vb_types.h"

namespace fc {

class Pump;
class Dialogs;
class TcpSocket;
class WindowTimer;
class Label;
class ProgressBar;
class ListView;
class CheckBox;
struct NetworkModule;

struct EthernetPanel {
    Pump& pump;
    Dialogs& dialogs;
    NetworkModule& red;
    TcpSocket& WsckCliente;
    TcpSocket& WsckClienteSiguiente;
    WindowTimer& TimerConnection;
    WindowTimer& TimerEnvio;
    WindowTimer& timerout;
    Flag& tiempo_agotado;
    Label& lblInformacion;
    Label& Texto;
    ProgressBar& BarraEth;
    ListView& lstBalanzas;
    const CheckBox& chkADSL;
    const Integer& nivel;
    std::vector<MensajeEth>& mensajes;
    const std::vector<std::string>& lista_balanzas;
    // The number the list's first scale is shown with in the texts: 1, or in
    // a parallel run's worker, which loads one scale of a longer list, that
    // scale's place in the whole list.
    const Integer& primera_balanza;
    std::vector<bool>& estado_balanzas;
    const Long& puerto_tx;
    const Long& checksum_memoria;
    std::string& mac_actual;
    // The MAC the address table gave for the scale at its MAC decision; empty
    // when it was not read or not found.
    std::string& mac_tabla;
    Flag& pide_mac;
    Integer& balanza_actual;
    RespuestaBalanza& respuesta;
    // The next MAC address as twelve hex digits; empty when none is left.
    std::function<std::string()> DameMACAddress;
    // Shows the scale record form modally for `balanza_actual`.
    std::function<void()> frmDatosBalanza;
    // Stops the load animation.
    std::function<void()> paradibu;
    // Told when scale i's turn begins, before its address table rows go.
    std::function<void(int i)> balanzaEmpieza;
    // Told when scale i's turn has ended, with its flag and lblInformacion
    // as they stand then.
    std::function<void(int i)> balanzaTerminada;
};

}  // namespace fc
