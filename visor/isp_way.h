// The way to the visor as the ISP dialogue sees it: the serial line or the
// two UDP sockets. The dialogue is one; what differs between the ways is how
// a record goes out, how the answer is gathered and counted, and what tells
// that the operator has closed the link.
#pragma once

#include <string>

namespace fc {

class IspWay {
  public:
    virtual ~IspWay() = default;

    // One record out and its answer waited for (MV510haz_envio or
    // MV510haz_envio_udp): true when `esperados` characters came within
    // `limiteMs`; the answer is then in the screen's respuesta_visor.
    virtual bool envio(const std::string& texto, int limiteMs, int esperados) = 0;
    // The link is still up during programming: false once the operator
    // closed it.
    virtual bool viva() = 0;

    // The synchronisation's pieces. Before the first pass: the link made
    // ready and old input dropped.
    virtual void preparaSincronia() = 0;
    // At the start of each pass: what came before is thrown away.
    virtual void descartaEntrada() = 0;
    virtual void envia(const std::string& texto) = 0;
    // The end of a pass's wait, by the count of characters received.
    virtual bool cuentaCumplida(int esperados) = 0;
    // The link is still up during the synchronisation.
    virtual bool vivaEnSincronia() = 0;
    // What has come, taken.
    virtual std::string respuesta() = 0;
};

}  // namespace fc
