#include "firmware/message_fields.h"

#include "firmware/hex_text.h"
#include "firmware/text_slices.h"

namespace fc {

std::string numeroDeContador(Long contador, Dialogs& dialogs) {
    std::string digitos = Hex(contador);
    if (digitos.size() < 4)
        digitos.insert(0, 4 - digitos.size(), '0');
    return fixedText(DameHex(Mid(digitos, 3, 2), dialogs) + DameHex(Mid(digitos, 1, 2), dialogs),
                     kAnchoNumero);
}

std::string direccionDeBloque(const std::string& bloque, Dialogs& dialogs) {
    return fixedText(DameHex(Mid(bloque, 3, 2), dialogs) + DameHex(Mid(bloque, 1, 2), dialogs),
                     kAnchoDireccion);
}

MensajeEth mensajeDeControl(Byte tipo) {
    return MensajeEth{tipoDe(tipo), std::string(2, '\0'), std::string(2, '\0'),
                      std::string(kLongitudMensaje, '0')};
}

}  // namespace fc
