// The words and records of the visor's load: what goes to the visor's boot
// loader, what the screen shows and what the message boxes say. The texts
// are used as they stand, spelling and blanks included.
#pragma once

namespace fc::mv510 {

// Records of the boot loader's in-system programming dialogue.
constexpr const char* kSincronia = "U";
constexpr const char* kBorrado = ":0100000307F5";
constexpr const char* kComprobacionBlanco = ":0500000400007FFF0178";
constexpr const char* kEscribeBsb = ":03000003060000F4";
constexpr const char* kLeeBsb = ":020000050701F1";
constexpr const char* kCabeceraVolcado = ":05000004";
// What follows the echo of a record the loader has done.
constexpr const char* kHecho = ".\r\n";
// The Boot Status Byte as it must read back.
constexpr const char* kBsbLeido = "00";

// Time limits, in milliseconds.
constexpr int kLimiteSincroniaInicial = 2000;
constexpr int kLimiteSincroniaBorrado = 20000;
constexpr int kLimitePrograma = 10000;
constexpr int kLimiteVolcado = 20000;
// Characters of a dump answer after the echo of its command: eight lines of
// 32 hex digits, 39 apart, counted up to the last digit of the eighth.
constexpr int kCaracteresVolcado = 312;
constexpr int kSeparacionLineas = 39;
constexpr int kPrimeraLinea = 8;

// The image and its blocks.
constexpr long kFinImagen = 0x10000;
constexpr long kMargenPrograma = 0x12;
constexpr long kBloque = 128;
constexpr int kIntentosVolcado = 3;

// The screen's words.
constexpr const char* kEnciende = "               Switch on the MV510";
constexpr const char* kBorrando = "Visor connected. Please Wait, erasing.";
constexpr const char* kVerificandoBlanco = "Visor connected. Please Wait, verifying blank.";
constexpr const char* kCancelado = "Firmcast cancelled by user";
constexpr const char* kProgramando = "Please Wait, programming";
constexpr const char* kVerificando = "Please Wait, verifying.";
constexpr const char* kConfigurando = "Please Wait, configuring.";
constexpr const char* kVerificandoConfiguracion = "Please Wait, verifying the configuration.";
constexpr const char* kCargado = "Visor loaded OK.";
constexpr const char* kNoCargado = "ERROR. Visor not loaded.";
constexpr const char* kFirmcastOk = "Firmcast OK";
constexpr const char* kFirmcastError = "Firmcast Error";
constexpr const char* kEnciendeBalanza = "Switch on the scale";
constexpr const char* kCargandoFichero = "Loading file in memory";
constexpr const char* kFicheroEnMemoria = "File is in memory";

// The message boxes.
constexpr const char* kRespuestaMala = "Bad answer from the visor";
constexpr const char* kSinRespuesta = "Timeout. No answer from the visor";
constexpr const char* kSinRespuestaVolcado = "Timeout: No answer from the visor.";
constexpr const char* kBsbMalEscrito = "There was a mistake programming the Boot Status Byte (BSB)";
constexpr const char* kBsbSinRespuestaEscritura =
    "Timeout. No answer programming the Boot Status Byte (BSB)";
constexpr const char* kBsbMalLeido = "There was a mistake verifying the Boot Status Byte (BSB)";
constexpr const char* kBsbSinRespuestaLectura =
    "Timeout. No answer verifying the Boot Status Byte (BSB)";
constexpr const char* kSinPuerto = "You must select one Serial Port";
constexpr const char* kErrorPuerto = "Error at port COM";
constexpr const char* kDireccionMala = "The IP Address is not a valid one";
constexpr const char* kFicheroMalo = "File not valid";
constexpr const char* kParametroMalo = "The parameter is not valid.";

// The UDP ports: the visor's, as the screen starts, and the local one the
// answers come to.
constexpr int kPuertoVisor = 3000;
constexpr int kPuertoRespuestas = 3001;

}  // namespace fc::mv510
