#include "ethernet/address_table.h"

#include <vector>

#include "common/error_log.h"
#include "ethernet/address_text.h"
#include "ethernet/inet_addr.h"
#include "ethernet/network_module.h"

namespace fc {

namespace {

constexpr int kIntentosPing = 3;

// Writes once to the log that the program may not do something, so that the
// silent failures that follow can be understood.
void avisaUnaVez(NetworkModule& m, bool& avisado, const std::string& nombre,
                 const std::string& descripcion) {
    if (avisado)
        return;
    avisado = true;
    EscribirLog(m.c, nombre, descripcion, 0);
}

// The table as the platform publishes it; empty when it cannot be read.
std::vector<NeighbourRow> leeTabla(NetworkModule& m) {
    std::vector<NeighbourRow> filas;
    if (m.network.readNeighbours(filas) != NetResult::Done)
        filas.clear();
    return filas;
}

std::vector<Byte> bytesIp(const NeighbourRow& fila) {
    return std::vector<Byte>(fila.ip.begin(), fila.ip.end());
}

std::vector<Byte> bytesMac(const NeighbourRow& fila) {
    return std::vector<Byte>(fila.physical.begin(), fila.physical.begin() + 6);
}

// Steps 2 to 4 of DameMacDeTabla: the first row with that exact IP text.
bool buscaEnTabla(NetworkModule& m, const std::string& ip, std::string& mac) {
    mac.clear();
    for (const NeighbourRow& fila : leeTabla(m)) {
        if (IpATexto(bytesIp(fila), 4) == ip) {
            mac = MacATexto(bytesMac(fila), "");
            return true;
        }
    }
    return false;
}

}  // namespace

void BorrarTablaARP(NetworkModule& m, const std::string& /*ip*/) {
    for (const NeighbourRow& fila : leeTabla(m)) {
        if (m.network.deleteNeighbour(fila) == NetResult::NotPermitted) {
            avisaUnaVez(m, m.avisadoSinBorrado, "BorrarTablaARP",
                        "The program may not delete entries of the address table "
                        "(it needs CAP_NET_ADMIN); the table is left as it is");
        }
    }
}

bool HacerPing(NetworkModule& m, const std::string& ip) {
    std::optional<Ipv4> destino = inet_addr(ip);
    if (!destino)
        return false;
    bool contestado = false;
    NetResult r = m.network.echo(*destino, m.tiempoEco, contestado);
    if (r == NetResult::NotPermitted) {
        avisaUnaVez(m, m.avisadoSinEco, "HacerPing",
                    "The program may not send an echo request (it needs CAP_NET_RAW, "
                    "or net.ipv4.ping_group_range must include its group)");
    }
    return r == NetResult::Done && contestado;
}

bool DameMacPorPing(NetworkModule& m, const std::string& ip, std::string& mac) {
    mac.clear();
    if (ip.empty())
        return false;
    BorrarTablaARP(m, ip);
    bool contestado = false;
    for (int intento = 0; intento < kIntentosPing && !contestado; ++intento)
        contestado = HacerPing(m, ip);
    if (!contestado)
        return false;
    return buscaEnTabla(m, ip, mac);
}

bool DameMacDeTabla(NetworkModule& m, const std::string& ip, std::string& mac) {
    mac.clear();
    if (ip.empty())
        return false;
    return buscaEnTabla(m, ip, mac);
}

}  // namespace fc
