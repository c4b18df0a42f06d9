#include "firmware/hex_text.h"

#include <cstdint>

#include "platform/runtime_error.h"

namespace fc {

namespace {

// The digit value DameCheckSum takes from one character. The match is exact:
// lower case and any other character keep the value of the character before.
std::uint32_t exactDigit(char c, std::uint32_t previous) {
    if (c >= '0' && c <= '9')
        return static_cast<std::uint32_t>(c - '0');
    if (c >= 'A' && c <= 'F')
        return static_cast<std::uint32_t>(c - 'A' + 10);
    return previous;
}

// Subtracts `step` from `valor` while it is at least `step`; returns how often.
Byte subtractWhileAbove(Integer& valor, Integer step) {
    Byte count = 0;
    while (valor >= step) {
        ++count;
        valor = static_cast<Integer>(valor - step);
    }
    return count;
}

}  // namespace

Long hex_detail::valHexLong(std::string_view text) {
    std::uint64_t value = 0;
    for (char c : text) {
        const int d = digit(c);
        if (d < 0)
            break;
        value = value * 16 + static_cast<std::uint64_t>(d);
        if (value > 0xFFFFFFFFu)
            throw RuntimeError(err::kOverflow);
    }
    if (value <= 0xFFFFu)
        return static_cast<Integer>(static_cast<std::uint16_t>(value));
    return static_cast<Long>(static_cast<std::uint32_t>(value));
}

Long CHex2Lng(const std::string& texto) {
    return ValHex(texto);
}

std::size_t halfRoundedToEven(std::size_t count) {
    const std::size_t half = count / 2;
    if (count % 2 == 0)
        return half;
    return half % 2 == 0 ? half : half + 1;
}

std::string DameHex(const std::string& texto, Dialogs& dialogs) {
    std::string caracteres;
    appendDameHex(caracteres, texto, dialogs);
    return caracteres;
}

void appendDameHex(std::string& out, std::string_view texto, Dialogs& dialogs) {
    if (texto.size() % 2 != 0)
        dialogs.msgBox("Datos mal pasados a DameHex", mb::kOkOnly);
    const std::size_t pares = halfRoundedToEven(texto.size());
    for (std::size_t i = 1; i <= pares; ++i)
        out += static_cast<char>(static_cast<Byte>(ValHexAt(texto, 2 * i - 1, 2)));
}

std::string DameCheckSum(const std::string& texto, Dialogs& dialogs) {
    if (texto.size() % 2 != 0) {
        dialogs.msgBox("La longitud del String pasado a DameCheckSum no es par", mb::kOkOnly);
        return "00";
    }
    // The digit value lives across characters and is never cleared. Only its
    // low 8 bits can reach the sum, so letting the unsigned value wrap when a
    // run of odd characters keeps multiplying it changes no result.
    std::uint32_t digito = 0;
    Byte suma = 0;
    for (std::size_t i = 0; i < texto.size(); ++i) {
        digito = exactDigit(texto[i], digito);
        if (i % 2 == 0)
            digito *= 16;
        suma = static_cast<Byte>(suma + digito);
    }
    return char_hex(static_cast<Byte>(0x100 - suma));
}

std::string to_hex(Integer& valor) {
    const Byte d1 = subtractWhileAbove(valor, 0x1000);
    const Byte d2 = subtractWhileAbove(valor, 0x100);
    const Byte d3 = subtractWhileAbove(valor, 0x10);
    // A negative value went through the loops untouched: its low byte gives a
    // digit only when it happens to be 15 or less.
    return to_cadena(d1) + to_cadena(d2) + to_cadena(d3) + to_cadena(static_cast<Byte>(valor));
}

std::string to_cadena(Byte valor) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    if (valor > 15)
        return {};
    return std::string(1, kDigits[valor]);
}

std::string char_hex(Byte valor) {
    Integer resto = valor;
    const Byte alto = subtractWhileAbove(resto, 16);
    return to_cadena(alto) + to_cadena(static_cast<Byte>(resto));
}

}  // namespace fc
