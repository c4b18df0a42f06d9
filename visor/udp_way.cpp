// The UDP way: each record one datagram on `Winsock_Envio`; the answers,
// in as many datagrams as the visor's bridge makes, joined in `buffer_udp`
// in the order they arrive and counted in `contador_udp`. A count at or
// above the expected one ends a wait.
#include "platform/pump.h"
#include "platform/socket_state.h"
#include "visor/frm_carga_mv510.h"
#include "visor/isp_ways.h"

namespace fc {

namespace {

class UdpWay : public IspWay {
  public:
    explicit UdpWay(frmCargaMV510& s) : s_(s) {}

    bool envio(const std::string& texto, int limiteMs, int esperados) override {
        return s_.MV510haz_envio_udp(texto, limiteMs, esperados);
    }
    bool viva() override { return s_.Winsock_recepcion->state() != sck::kClosed; }
    void preparaSincronia() override {}
    void descartaEntrada() override {
        s_.buffer_udp.clear();
        s_.contador_udp = 0;
    }
    void envia(const std::string& texto) override { s_.Winsock_Envio->sendData(texto); }
    bool cuentaCumplida(int esperados) override { return s_.contador_udp >= esperados; }
    bool vivaEnSincronia() override { return s_.Winsock_Envio->state() == sck::kOpen; }
    std::string respuesta() override { return s_.buffer_udp; }

  private:
    frmCargaMV510& s_;
};

}  // namespace

std::unique_ptr<IspWay> makeUdpWay(frmCargaMV510& screen) {
    return std::make_unique<UdpWay>(screen);
}

bool frmCargaMV510::MV510haz_envio_udp(const std::string& texto, int limiteMs, int esperados) {
    respuesta_visor.clear();
    buffer_udp.clear();
    contador_udp = 0;
    envio().sendData(texto);
    timerout.setInterval(limiteMs);
    tiempo_agotado = kFalse;
    timerout.setEnabled(true);
    const auto cerrada = [this] { return recepcion().state() == sck::kClosed; };
    while (tiempo_agotado == kFalse && !cerrada() && contador_udp < esperados) {
        services_.pump.doEvents();
    }
    timerout.setEnabled(false);
    if (tiempo_agotado != kFalse || cerrada())
        return false;
    respuesta_visor = buffer_udp;
    return true;
}

void frmCargaMV510::Winsock_recepcion_DataArrival(Long bytesTotal) {
    buffer_udp += recepcion().getData();
    contador_udp += bytesTotal;
}

}  // namespace fc
