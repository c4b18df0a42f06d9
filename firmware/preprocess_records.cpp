#include "firmware/preprocess_records.h"

#include "firmware/hex_text.h"
#include "firmware/message_fields.h"
#include "firmware/preprocesa_file.h"
#include "firmware/text_slices.h"
#include "platform/controls.h"
#include "platform/file_table.h"
#include "platform/pump.h"

namespace fc {

namespace {
constexpr char kRelleno = '\xFF';

// Positions of a record's fields in its line.
constexpr Long kPosLongitud = 2;
constexpr Long kPosDireccion = 4;
constexpr Long kPosTipo = 8;
constexpr Long kPosDatos = 10;
}  // namespace

PreprocessRecords::PreprocessRecords(PreprocessPanel& panel, Integer num_fichero,
                                     std::string bloque)
    : panel_(panel), num_fichero_(num_fichero), bloque_(std::move(bloque)) {}

void PreprocessRecords::leeLinea() {
    panel_.files.lineInput(num_fichero_, panel_.linea_fichero);
    tipo_registro_ = fieldAt(panel_.linea_fichero, static_cast<std::size_t>(kPosTipo), 2);
}

// LL * 2 digits of data from the line, as far as the line goes.
std::string PreprocessRecords::datosDeLaLinea() {
    return Mid(panel_.linea_fichero, kPosDatos, panel_.longitud_datos);
}

MensajeEth PreprocessRecords::nuevoMensaje(std::string datos) {
    return MensajeEth{fixedText(DameHex(tipo_registro_, panel_.dialogs), kAnchoTipo),
                      direccionDeBloque(bloque_, panel_.dialogs),
                      numeroDeContador(contador_, panel_.dialogs), std::move(datos)};
}

void PreprocessRecords::segundaLinea() {
    leeLinea();
    if (tipo_registro_ == "00") {
        primerRegistroDelBanco();
    } else if (tipo_registro_ == "01") {
        finDelPrograma(kLongitudMensaje - 2);
    } else if (tipo_registro_ == "66") {
        datoParaLaBalanza();
    }
}

void PreprocessRecords::restoDelFichero() {
    while (!panel_.files.eof(num_fichero_)) {
        leeLinea();
        despacha();
        panel_.pump.doPendingEvents();
    }
}

// A 02 record reads the line after it at once; when that isn't a data
// record it is dispatched here in turn, without a test for the file's end.
void PreprocessRecords::despacha() {
    for (;;) {
        panel_.longitud_datos =
            ValHexAt(panel_.linea_fichero, static_cast<std::size_t>(kPosLongitud), 2) * 2;
        if (tipo_registro_ == "02") {
            if (abreBanco())
                return;
            continue;
        }
        if (tipo_registro_ == "00") {
            registroDeDatos();
        } else if (tipo_registro_ == "01") {
            rellenaUltimo();
            finDelPrograma(kLongitudMensaje - 1);
        } else if (tipo_registro_ == "66") {
            datoParaLaBalanza();
        }
        return;
    }
}

// The bank message, then the bank's first data record. False when the line
// read after the bank record is not a data record and waits to be dispatched.
bool PreprocessRecords::abreBanco() {
    rellenaUltimo();
    bloque_ = Mid(panel_.linea_fichero, kPosDatos, 4);
    contador_ = 1;
    panel_.mensajes.push_back(nuevoMensaje(String(kLongitudMensaje, '0')));
    if (panel_.linea_fichero == kMarcaCabecera)
        marca_cabecera_ = true;
    leeLinea();
    if (tipo_registro_ != "00")
        return false;
    primerRegistroDelBanco();
    if (marca_cabecera_)
        muestraCabecera();
    return true;
}

// The first data record of a bank goes at its own address in the message:
// as many bytes of 0xFF before it as its address says. Nothing splits it, so
// a record that ends beyond 1024 bytes makes a longer message.
void PreprocessRecords::primerRegistroDelBanco() {
    panel_.longitud_datos = CHex2Lng(Mid(panel_.linea_fichero, kPosLongitud, 2)) * 2;
    const Long direccion_registro = CHex2Lng(Mid(panel_.linea_fichero, kPosDireccion, 4));
    const std::string relleno = String(direccion_registro * 2, 'F') + datosDeLaLinea();
    panel_.mensajes.push_back(nuevoMensaje(DameHex(relleno, panel_.dialogs)));
}

// After the first record of a bank, records are taken as contiguous, whatever
// their address: a hole in the file closes up.
void PreprocessRecords::registroDeDatos() {
    if (panel_.mensajes.back().datos.size() == kLongitudMensaje) {
        ++contador_;
        panel_.mensajes.push_back(nuevoMensaje(""));
    }
    MensajeEth& ultimo = panel_.mensajes.back();
    if (static_cast<Long>(ultimo.datos.size()) + panel_.longitud_datos / 2 >
        Long{kLongitudMensaje}) {
        partePorElLimite(ultimo);
    } else {
        appendDameHex(ultimo.datos,
                      fieldAt(panel_.linea_fichero, static_cast<std::size_t>(kPosDatos),
                              static_cast<std::size_t>(panel_.longitud_datos)),
                      panel_.dialogs);
    }
}

// A record that crosses the 1024-byte limit fills its message exactly and
// begins the next one with the rest of the line, less its checksum. A
// message already past the limit makes the count negative: a fault.
void PreprocessRecords::partePorElLimite(MensajeEth& ultimo) {
    const Long cabe = (Long{kLongitudMensaje} - static_cast<Long>(ultimo.datos.size())) * 2;
    const std::string tomados = Mid(panel_.linea_fichero, kPosDatos, cabe);
    ultimo.datos += DameHex(tomados, panel_.dialogs);
    ++contador_;
    const std::string resto =
        Mid(panel_.linea_fichero, kPosDatos + static_cast<Long>(tomados.size()));
    MensajeEth siguiente = nuevoMensaje("");
    siguiente.datos = DameHex(Left(resto, static_cast<Long>(resto.size()) - 2), panel_.dialogs);
    panel_.mensajes.push_back(std::move(siguiente));
}

// The end of the program: 0xFF and `longitudCeros` chars "0" (1022 when it
// is the file's second line, a message one byte short; 1023 later).
void PreprocessRecords::finDelPrograma(Long longitudCeros) {
    cierraBanco();
    MensajeEth fin = mensajeDeControl(tipo_msg::kFinPrograma);
    fin.datos = std::string(1, kRelleno) + String(longitudCeros, '0');
    panel_.mensajes.push_back(std::move(fin));
}

// The record's first data byte and 1022 "0": 1023 bytes. The message before
// it is left as it stands.
void PreprocessRecords::datoParaLaBalanza() {
    cierraBanco();
    MensajeEth dato = mensajeDeControl(tipo_msg::kDatoBalanza);
    dato.datos = DameHex(Mid(panel_.linea_fichero, kPosDatos, 2), panel_.dialogs) +
                 String(kLongitudMensaje - 2, '0');
    panel_.mensajes.push_back(std::move(dato));
}

// The ten characters of the record after the marker: model, country,
// display and version.
void PreprocessRecords::muestraCabecera() {
    panel_.cabecera_modelo = DameHex(datosDeLaLinea(), panel_.dialogs);
    const std::string& c = panel_.cabecera_modelo;
    panel_.lblModelo.setCaption("Model: " + Mid(c, 1, 4) + "       Country: " + Mid(c, 5, 2) +
                                "       Display: " + Mid(c, 7, 1) +
                                "       Version: " + Mid(c, 8, 3));
    marca_cabecera_ = false;
}

// The last message of a bank is filled out to 1024 bytes with 0xFF.
void PreprocessRecords::rellenaUltimo() {
    std::string& datos = panel_.mensajes.back().datos;
    if (datos.size() < kLongitudMensaje)
        datos.resize(kLongitudMensaje, kRelleno);
}

void PreprocessRecords::cierraBanco() {
    bloque_ = "0000";
    contador_ = 0;
}

}  // namespace fc
