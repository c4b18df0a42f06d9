// The transfer of the transmit file by the driver, followed by the marks it
// leaves in "TX.TXT", with the scale's answers to the questions read from
// "RX.TXT".
#include <cmath>

#include "display/frm_carga_display_grafico.h"
#include "display/number_text.h"
#include "display/tx_records.h"
#include "platform/file_system.h"
#include "platform/file_table.h"
#include "platform/pump.h"

namespace fc {

namespace {

// Rounds half to even, as the run time's conversions do.
Long redondea(double valor) {
    return static_cast<Long>(std::nearbyint(valor));
}

bool marcada(const std::string& linea) {
    return medio(linea, 3, 1) == "*";
}

struct Respuesta {
    bool vista = false;
    bool si = false;
};

// The answer to the question tagged `etiqueta` among the lines of "RX.TXT".
Respuesta buscaRespuesta(FileTable& files, int numero, const std::string& etiqueta) {
    Respuesta r;
    while (!r.vista && !files.eof(numero)) {
        std::string linea = files.lineInput(numero);
        if (medio(linea, 3, 2) == "P0" && medio(linea, 16, 6) == etiqueta) {
            r.vista = true;
            r.si = medio(linea, 14, 2) == "SI";
        }
    }
    return r;
}

}  // namespace

// One pass of the progress: follows the marked lines from position `p`.
// False when a question was not confirmed (the file is then closed).
bool frmCargaDisplayGrafico::sigueEnvio(bool& fin) {
    FileTable& files = services_.files;
    int numero = files.freeFile();
    files.open(numero, rutaKorvacom("TX.TXT"), FileTable::Mode::Input);
    const std::int64_t longitud = files.lof(numero);
    const Long total = redondea(static_cast<double>(longitud) / kRegistroEnDisco);
    const Long actual = redondea(static_cast<double>(posicion_) / kRegistroEnDisco);
    if (actual != anterior_) {
        armaTimerout(10000);
        anterior_ = actual;
    }
    Texto.setCaption("Message  " + std::to_string(actual) + "  of  " + std::to_string(total));
    Barra.setMax(static_cast<Long>(longitud) + 2);
    Barra.setValue(posicion_);
    auto muestra = [&] {
        Texto.setCaption("Message " +
                         textoNumero(static_cast<double>(posicion_) / kRegistroEnDisco, 15) +
                         " of " + std::to_string(total));
    };
    files.seek(numero, posicion_);
    std::string linea = files.eof(numero) ? std::string() : files.lineInput(numero);
    muestra();
    while (marcada(linea) && !files.eof(numero)) {
        if (medio(linea, 3, 11) == kPreguntaEnviada) {
            bool confirmada = false;
            CompruebaP0(linea, confirmada);
            if (!confirmada) {
                files.close(numero);
                return false;
            }
        }
        posicion_ += static_cast<Long>(linea.size()) + 2;
        Barra.setValue(posicion_);
        linea = files.lineInput(numero);
        muestra();
    }
    Barra.setValue(posicion_);
    fin = files.eof(numero);
    files.close(numero);
    services_.pump.doEvents();
    services_.pump.sleep(1000);
    return true;
}

void frmCargaDisplayGrafico::EnviaImagen(bool& resultado) {
    resultado = false;
    services_.fileSystem.copyFile(rutaPrograma("txtemp.txt"), rutaKorvacom("TX.TXT"));
    Texto.setCaption("");
    Start();
    services_.pump.sleep(2000);
    Texto.setVisible(true);
    Texto.setCaption(" ");
    Barra.setVisible(true);
    Barra.setMin(0);
    Barra.setValue(0);
    posicion_ = 1;
    anterior_ = 0;
    armaTimerout(10000);
    bool fin = false;
    while (!tiempo_agotado && !fin) {
        if (!sigueEnvio(fin)) {
            Texto.setCaption(Texto.caption() + " ERROR. Error verifying in scale's CPU ");
            Parar();
            return;
        }
    }
    if (tiempo_agotado) {
        Texto.setCaption(Texto.caption() + " ERROR. No comunication ");
        Parar();
        return;
    }
    resultado = esperaVeredicto();
}

// The scale's answer to the last question, which stands for the whole image's
// checksum: 15 s at most.
bool frmCargaDisplayGrafico::esperaVeredicto() {
    FileTable& files = services_.files;
    Barra.setValue(Barra.max());
    timerout.setEnabled(false);
    Texto.setCaption(" ");
    Label2.setCaption("Waiting checksum");
    armaTimerout(15000);
    Respuesta respuesta;
    while (!tiempo_agotado && !respuesta.vista) {
        if (existeEnKorvacom("RX.TXT")) {
            int numero = files.freeFile();
            files.open(numero, rutaKorvacom("RX.TXT"), FileTable::Mode::Input);
            if (files.lof(numero) >= 131)
                respuesta = buscaRespuesta(files, numero, id_p0);
            files.close(numero);
        }
        if (!respuesta.vista) {
            services_.pump.doEvents();
            services_.pump.sleep(1000);
        }
    }
    timerout.setEnabled(false);
    if (tiempo_agotado)
        Texto.setCaption("ERROR. No checksum ");
    Parar();
    return respuesta.vista && respuesta.si;
}

void frmCargaDisplayGrafico::CompruebaP0(const std::string& linea, bool& resultado) {
    FileTable& files = services_.files;
    const std::string etiqueta = medio(linea, 16, 6);
    TimerP0.setEnabled(false);
    p0_agotado = false;
    TimerP0.setInterval(15000);
    TimerP0.setEnabled(true);
    Respuesta respuesta;
    while (!p0_agotado && !respuesta.vista) {
        if (existeEnKorvacom("RX.TXT")) {
            int numero = files.freeFile();
            files.open(numero, rutaKorvacom("RX.TXT"), FileTable::Mode::Input);
            if (files.lof(numero) > 0)
                respuesta = buscaRespuesta(files, numero, etiqueta);
            files.close(numero);
        }
        services_.pump.doEvents();
        services_.pump.sleep(1000);
    }
    TimerP0.setEnabled(false);
    resultado = respuesta.vista && respuesta.si;
}

}  // namespace fc
