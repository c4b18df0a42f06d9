// The records of a file after its first line, as PreprocesaFile turns them
// into messages: data records fill the bank's messages of 1024 bytes, a 02
// record opens a bank, 01 ends the program, 0x66 carries one byte for the
// scale, anything else is read over. Every run-time fault (a read past the
// end, a negative length from a malformed record) is left to the caller.
#pragma once

#include <string>

#include "firmware/preprocess_panel.h"
#include "platform/vb_types.h"

namespace fc {

class PreprocessRecords {
  public:
    // `bloque` is the bank of the first line, whose message is already in
    // the list as number 1.
    PreprocessRecords(PreprocessPanel& panel, Integer num_fichero, std::string bloque);

    // The second line, treated by itself.
    void segundaLinea();
    // Every line after it, to the end of the file, yielding once a line.
    void restoDelFichero();

  private:
    void despacha();
    bool abreBanco();
    void primerRegistroDelBanco();
    void registroDeDatos();
    void partePorElLimite(MensajeEth& ultimo);
    void finDelPrograma(Long longitudCeros);
    void datoParaLaBalanza();
    void muestraCabecera();
    void rellenaUltimo();
    void cierraBanco();
    MensajeEth nuevoMensaje(std::string datos);
    std::string datosDeLaLinea();
    void leeLinea();

    PreprocessPanel& panel_;
    Integer num_fichero_;
    std::string bloque_;
    Long contador_ = 1;
    std::string tipo_registro_;
    bool marca_cabecera_ = false;
};

}  // namespace fc
