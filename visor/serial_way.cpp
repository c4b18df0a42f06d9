// The serial way: records through Output, answers counted by InBufferCount
// and taken from Input. During the synchronisation a pass ends only when the
// count is exactly what the step expects.
#include "platform/pump.h"
#include "visor/frm_carga_mv510.h"
#include "visor/isp_ways.h"

namespace fc {

namespace {

class SerialWay : public IspWay {
  public:
    explicit SerialWay(frmCargaMV510& s) : s_(s) {}

    bool envio(const std::string& texto, int limiteMs, int esperados) override {
        return s_.MV510haz_envio(texto, limiteMs, esperados);
    }
    bool viva() override { return s_.Linea.portOpen(); }
    void preparaSincronia() override {
        if (!s_.Linea.portOpen())
            s_.Linea.setPortOpen(true);
        s_.timerout.setEnabled(false);
        s_.Linea.setInBufferCount(0);
    }
    void descartaEntrada() override { s_.Linea.input(); }
    void envia(const std::string& texto) override { s_.Linea.output(texto); }
    bool cuentaCumplida(int esperados) override { return s_.Linea.inBufferCount() == esperados; }
    bool vivaEnSincronia() override { return s_.Linea.portOpen(); }
    std::string respuesta() override { return s_.Linea.input(); }

  private:
    frmCargaMV510& s_;
};

}  // namespace

std::unique_ptr<IspWay> makeSerialWay(frmCargaMV510& screen) {
    return std::make_unique<SerialWay>(screen);
}

bool frmCargaMV510::MV510haz_envio(const std::string& texto, int limiteMs, int esperados) {
    if (!Linea.portOpen())
        return false;
    Linea.input();
    respuesta_visor.clear();
    Linea.output(texto);
    Pump& pump = services_.pump;
    while (Linea.portOpen() && Linea.outBufferCount() != 0) pump.doEvents();
    timerout.setInterval(limiteMs);
    tiempo_agotado = kFalse;
    timerout.setEnabled(true);
    while (tiempo_agotado == kFalse && Linea.portOpen() && Linea.inBufferCount() < esperados) {
        pump.doEvents();
    }
    timerout.setEnabled(false);
    const bool vino = Linea.portOpen() && tiempo_agotado == kFalse;
    if (Linea.portOpen())
        respuesta_visor = Linea.input();
    else
        respuesta_visor.clear();
    return vino;
}

}  // namespace fc
