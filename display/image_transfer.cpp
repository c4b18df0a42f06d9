// The load of a display: the image in memory and its CRC, the transmit file
// of records and questions, and the order of the whole load.
#include "display/display_crc.h"
#include "display/frm_carga_display_grafico.h"
#include "display/question_tag.h"
#include "display/tx_records.h"
#include "firmware/file_loader.h"
#include "firmware/firmware_path.h"
#include "platform/calendar.h"
#include "platform/dialogs.h"
#include "platform/file_table.h"
#include "platform/pump.h"

namespace fc {

bool frmCargaDisplayGrafico::leeFicheroEnMemoria() {
    Label2.setCaption("Loading file in memory");
    ReaderPanel panel{
        services_.dialogs, services_.files, services_.drives, Barra,       Label2,
        fichero_firmware,  linea_fichero,   memoria,          pos_memoria, estado_lector};
    Integer numero = 0;
    if (!carga_fichero(panel, numero)) {
        acaba();
        Label2.setVisible(false);
        Barra.setVisible(false);
        services_.dialogs.msgBox("File not valid", mb::kCritical);
        return false;
    }
    Long crc = 0;
    CalculaChecksum(crc);
    crc_imagen = crc;
    fichero_en_memoria = fichero_firmware;
    return true;
}

void frmCargaDisplayGrafico::CargarFlash() {
    frInfoComunicacion.setVisible(true);
    Label2.setVisible(true);
    Label2.setCaption("Switch on the scale");
    Texto.setCaption(" ");
    if (fichero_firmware != fichero_en_memoria) {
        if (!leeFicheroEnMemoria())
            return;
    } else if (fichero_firmware.empty()) {
        acaba();
        Label2.setVisible(false);
        Barra.setVisible(false);
        Texto.setVisible(false);
        services_.dialogs.msgBox("File " + fichero_firmware + " not valid", mb::kCritical);
        return;
    }
    Label2.setCaption("Generating Tx file");
    GeneraFicheroTx();
    Label2.setCaption("Sending start");
    bool arrancado = false;
    ArrancaKorvacom(arrancado);
    if (arrancado) {
        Label2.setCaption("Loading program");
        bool cargado = false;
        EnviaImagen(cargado);
        Label2.setCaption(cargado ? "Loaded OK" : "Loaded KO. ERROR");
    }
    Barra.setVisible(false);
    Integer tics = 5;
    CerrarKorvaCOM(tics);
}

// The CRC of bytes 0 to 0xFEFF, with its trace in "mirl" in the current
// folder: the running value after every 16 bytes, for checking by hand.
void frmCargaDisplayGrafico::CalculaChecksum(Long& resultado) {
    FileTable& files = services_.files;
    int traza = files.freeFile();
    files.open(traza, "mirl", FileTable::Mode::Output);
    Long crc = 0;
    for (Long i = 0; i < kBytesCrc; ++i) {
        crc = pasoCrc(tabla_crc, crc, memoria[static_cast<std::size_t>(i)]);
        if (i % 16 == 15)
            files.print(traza, std::to_string(crc));
    }
    files.close(traza);
    resultado = crc;
}

// A fresh tag: the generator seeded from the clock, then one draw.
std::string frmCargaDisplayGrafico::nuevaEtiqueta() {
    LocalDateTime ahora = services_.calendar.now();
    double segundos = ahora.hour * 3600.0 + ahora.minute * 60.0 + ahora.second +
                      static_cast<double>(services_.pump.now() % 1000) / 1000.0;
    randomize(semilla_rnd, segundos);
    return etiquetaDe(rnd(semilla_rnd));
}

void frmCargaDisplayGrafico::GeneraFicheroTx() {
    FileTable& files = services_.files;
    const std::string dd = cmbDirLogica.text();
    int fuente = files.freeFile();
    files.open(fuente, rutaFichero(services_.drives, fichero_firmware), FileTable::Mode::Input);
    int salida = files.freeFile();
    files.open(salida, rutaPrograma("txtemp.txt"), FileTable::Mode::Output);
    for (Long n = 0; !files.eof(fuente); ++n) {
        std::string a = files.lineInput(fuente);
        std::string b = files.eof(fuente) ? std::string() : files.lineInput(fuente);
        files.print(salida, registroDatos(dd, n, a, b));
        if (n % 100 == 99)
            files.print(salida, registroPregunta(dd, nuevaEtiqueta()));
    }
    std::string ultima = registroPregunta(dd, nuevaEtiqueta());
    files.print(salida, ultima);
    id_p0 = medio(ultima, 16, 6);
    files.close(fuente);
    files.close(salida);
}

}  // namespace fc
