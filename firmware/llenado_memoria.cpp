#include "firmware/llenado_memoria.h"

#include "firmware/hex_text.h"
#include "firmware/message_fields.h"
#include "firmware/text_slices.h"

namespace fc {

namespace {

constexpr int kPasadas = 11;
constexpr Long kMensajesPrimerBanco = 32;
constexpr Long kMensajesPorBanco = 64;

// The pattern of one data message.
std::string patron(char letra, char digito) {
    return letra + std::string(kLongitudMensaje - 2, digito) + letra;
}

char siguiente(char c, char primero, char ultimo) {
    return c == ultimo ? primero : c + 1;
}

void ponBanco(MensajeEth& m, const std::string& direccion, Dialogs& dialogs) {
    m = mensajeDeControl(tipo_msg::kBanco);
    m.direccion = direccion;
    m.numero = numeroDeContador(1, dialogs);
}

// The bank's data messages, each put into the element added last, which is
// then followed by a new one.
void llenaBanco(std::vector<MensajeEth>& mensajes, const std::string& direccion, Long cuenta,
                Dialogs& dialogs) {
    char letra = 'A';
    char digito = '1';
    for (Long numero = 1; numero <= cuenta; ++numero) {
        MensajeEth& m = mensajes.back();
        m.tipo = tipoDe(tipo_msg::kDatos);
        m.numero = numeroDeContador(numero, dialogs);
        m.direccion = direccion;
        m.datos = patron(letra, digito);
        letra = siguiente(letra, 'A', 'J');
        digito = siguiente(digito, '1', '9');
        mensajes.emplace_back();
    }
}

}  // namespace

void LlenadoMemoria(std::vector<MensajeEth>& mensajes, Dialogs& dialogs) {
    mensajes.assign(1, mensajeDeControl(tipo_msg::kBorrado));
    Long banco = CHex2Lng("4800");
    Long cuenta = kMensajesPrimerBanco;
    mensajes.emplace_back();
    for (int pasada = 1; pasada <= kPasadas; ++pasada) {
        const std::string direccion = direccionDeBloque(Hex(banco), dialogs);
        ponBanco(mensajes.back(), direccion, dialogs);
        mensajes.emplace_back();
        llenaBanco(mensajes, direccion, cuenta, dialogs);
        banco += (pasada == 1 || pasada == kPasadas) ? 0x800 : 0x1000;
        cuenta = kMensajesPorBanco;
    }
    // This generator's end message has no leading 0xFF: 1022 "0".
    MensajeEth& fin = mensajes.back();
    fin = mensajeDeControl(tipo_msg::kFinPrograma);
    fin.datos = String(kLongitudMensaje - 2, '0');
}

}  // namespace fc
