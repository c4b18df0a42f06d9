#include "firmware/preprocesa_file.h"

#include "firmware/firmware_path.h"
#include "firmware/first_line_checks.h"
#include "firmware/hex_text.h"
#include "firmware/message_fields.h"
#include "firmware/preprocess_records.h"
#include "firmware/text_slices.h"
#include "platform/controls.h"
#include "platform/dialogs.h"
#include "platform/file_table.h"
#include "platform/runtime_error.h"

namespace fc {

namespace {

constexpr const char* kVacio = "The file is empty";
constexpr const char* kNoEsFlash = "This is not a Flash program file";
constexpr const char* kErrorPreprocesado = "Error en Preprocesado del fichero";

// One reading of the file: what the procedure keeps while it runs.
class Preprocesado {
  public:
    explicit Preprocesado(PreprocessPanel& panel) : panel_(panel) {}

    bool ejecuta(const std::string& fichero) {
        try {
            return lee(fichero);
        } catch (const RuntimeError&) {
            if (fichero_abierto_)
                panel_.files.close(num_fichero_);
            panel_.dialogs.msgBox(kErrorPreprocesado, mb::kCritical, "PreprocesaFile");
            return false;
        }
    }

  private:
    bool lee(const std::string& fichero) {
        panel_.lblModelo.setVisible(true);
        panel_.lblModelo.setCaption("");
        abre(fichero);
        panel_.linea_fichero = panel_.files.lineInput(num_fichero_);
        // A file of one line is "empty", however good that line.
        if (panel_.files.eof(num_fichero_))
            return rechaza(kVacio);
        panel_.inicio_linea = Left(panel_.linea_fichero, 3);
        if (panel_.es_serie_n || panel_.es_serie_w || panel_.es_tr8200) {
            if (!firstLineFitsEthernetMessages(panel_.linea_fichero))
                return rechaza(kNoEsFlash);
            panel_.inicio_linea = ":02";
        }
        // Only these models have their records read; the driver calls the
        // procedure for no other.
        if (panel_.es_serie_w || panel_.es_tr8200)
            leeRegistros();
        return cola();
    }

    void abre(const std::string& fichero) {
        num_fichero_ = static_cast<Integer>(panel_.files.freeFile());
        panel_.files.open(num_fichero_, rutaFichero(panel_.drives, fichero),
                          FileTable::Mode::Input);
        fichero_abierto_ = true;
    }

    bool rechaza(const char* texto) {
        panel_.files.close(num_fichero_);
        panel_.dialogs.msgBox(texto);
        if (panel_.acaba2)
            panel_.acaba2();
        return false;
    }

    void leeRegistros() {
        panel_.mensajes.assign(1, mensajeDeControl(tipo_msg::kBorrado));
        panel_.mensajes.push_back(mensajeDelPrimerBanco());
        PreprocessRecords registros(panel_, num_fichero_, Mid(panel_.linea_fichero, 10, 4));
        registros.segundaLinea();
        registros.restoDelFichero();
    }

    // The first line gives a message of its own, whatever its type: that
    // type, its four data digits as the bank, number 1.
    MensajeEth mensajeDelPrimerBanco() {
        const std::string& linea = panel_.linea_fichero;
        Dialogs& d = panel_.dialogs;
        MensajeEth m = mensajeDeControl(0);
        m.tipo = fixedText(DameHex(Mid(linea, 8, 2), d), kAnchoTipo);
        m.direccion = fixedText(DameHex(Mid(linea, 12, 2), d) + DameHex(Mid(linea, 10, 2), d),
                                kAnchoDireccion);
        m.numero = numeroDeContador(1, d);
        return m;
    }

    // The end of the load closes the list. A list that was never built has
    // no last element to add to: a fault.
    bool cola() {
        panel_.files.close(num_fichero_);
        if (panel_.mensajes.empty())
            throw RuntimeError(err::kSubscriptOutOfRange);
        panel_.mensajes.push_back(mensajeDeControl(tipo_msg::kFinCarga));
        return true;
    }

    PreprocessPanel& panel_;
    Integer num_fichero_ = 0;
    bool fichero_abierto_ = false;
};

}  // namespace

bool PreprocesaFile(PreprocessPanel& panel, const std::string& fichero) {
    return Preprocesado(panel).ejecuta(fichero);
}

}  // namespace fc
