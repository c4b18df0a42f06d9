// The serial path of the main driver: from the step 3 wait through the file
// checks, the connect step of the model's family, the line loop, the MAC step
// and the result, to the end of the pass. The dialogues with the devices are
// the line protocols' of the serial subsystem, run on this screen's line panel.
#include "common/kernel_waits.h"
#include "control/firmcast_form.h"
#include "firmware/first_line_checks.h"
#include "firmware/hex_text.h"
#include "platform/dialogs.h"
#include "platform/drives.h"
#include "platform/file_table.h"
#include "platform/pump.h"
#include "serial/banked_line.h"
#include "serial/numbered_line.h"

namespace fc {

namespace {
constexpr int kFile = 1;
}  // namespace

Firmcast::Next Firmcast::serialPath() {
    Banco_actual.setCaption("0");
    frDirectorio.setVisible(true);
    frInfoComunicacion.setVisible(false);
    if (paso_asistente == 3) {
        Next back = waitInScaleStep();
        if (back != Next::ReEntry)
            return back;
    }
    escala_lista_ = false;
    // A new load has asked for no MAC yet; the end command's answer says
    // whether it does. (Only the MAC step reads the flag, and it clears it
    // again first.)
    pide_mac = kFalse;
    if (hooks_.serialLoadStarted)
        hooks_.serialLoadStarted(*this);
    Next next = Next::EndOfPass;
    try {
        next = serialLoad();
    } catch (const RuntimeError&) {
        if (hooks_.serialLoadEnded)
            hooks_.serialLoadEnded(*this, false);
        throw;
    }
    if (hooks_.serialLoadEnded)
        hooks_.serialLoadEnded(*this, escala_lista_);
    return next;
}

// The load itself, from the opening of the file to the end of the pass.
Firmcast::Next Firmcast::serialLoad() {
    frDirectorio.setVisible(false);
    frInfoComunicacion.setVisible(true);
    animando = kTrue;
    Command2_Click();
    Tiempo1.setInterval(600);
    Tiempo1.setEnabled(true);
    cmdAdelante.setEnabled(false);
    cmdAtras.setEnabled(false);

    FileTable& files = services_.files;
    files.open(kFile, openFirmwareFile(), FileTable::Mode::Input);
    linea_fichero = files.lineInput(kFile);
    if (files.eof(kFile)) {
        files.close(kFile);
        services_.dialogs.msgBox("The file is empty");
        acaba2();
        return Next::EndOfPass;
    }
    inicio_linea = linea_fichero.substr(0, 3);
    if (es_serie_n || es_serie_w || es_serie_g || es_mv510) {
        if (!firstLineFitsSerialLoad(linea_fichero)) {
            services_.dialogs.msgBox("This is not a Flash program file for this Board");
            acaba2();
            return Next::EndOfPass;
        }
        inicio_linea = ":02";
    }
    bool banked = es_serie_h || es_tr6100 || es_matrix4000;
    if ((banked && inicio_linea != "S00") ||
        ((es_serie_n || es_serie_w) && inicio_linea != ":02")) {
        files.close(kFile);
        services_.dialogs.msgBox("This is not a Flash program file");
        acaba2();
        return Next::EndOfPass;
    }
    Texto.setCaption(es_tr6100 ? "Connecting with TR-6100" : "Connecting with scale");
    return serialConnect();
}

// Polls in the step 3 wait: the next pass of Production Way stops here
// until the operator starts it.
Firmcast::Next Firmcast::waitInScaleStep() {
    waitWhileStep(3);
    if (paso_asistente == 2)
        return Next::FileStep;
    if (paso_asistente == 1)
        return Next::WayStep;
    if (paso_asistente == 0)
        return Next::CycleHead;
    return Next::ReEntry;
}

// The firmware file's name on this machine. A name that maps to nothing
// opens as a missing file would.
std::string Firmcast::openFirmwareFile() {
    std::string host = services_.drives.hostPath(fichero_firmware);
    return host.empty() ? fichero_firmware : host;
}

Firmcast::Next Firmcast::serialConnect() {
    bool numbered = es_serie_n || es_serie_w || es_tr8200;
    bool banked = es_serie_h || es_tr6100 || es_matrix4000;
    LinePanel line = linePanel();
    if (numbered) {
        if (!numberedConnect(line))
            return Next::EndOfPass;
    } else if (banked) {
        if (!testk1(line)) {
            cmbvelocidades.setListIndex(4);
            Linea.setSettings("19200,N,8,1");
            if (!testk1(line)) {
                paradibu();
                services_.dialogs.msgBox(
                    es_tr6100 ? "No answer from TR-6100, check the cable or TR-6100"
                              : "No answer from H-7XX scale, check the cable or scale");
                acaba2();
                return Next::EndOfPass;
            }
        }
    } else if (es_serie_g) {
        cmbvelocidades.setListIndex(4);
        Linea.setSettings("19200,N,8,1");
        // The boot ROM load tells its outcome in its own box: the pass
        // closes without one of its own.
        bootRomLoad();
        return closeSerialLoad();
    }
    if (es_matrix4000) {
        Texto.setCaption("Matrix 4X00 connected");
    } else if (es_tr6100) {
        Texto.setCaption("TR-6100 connected");
    } else {
        Texto.setCaption("Scale connected. Please Wait, erasing FLASH ROM");
    }
    Barra.setMin(0);
    Barra.setValue(0);
    Barra.setMax(static_cast<Long>(services_.files.lof(kFile)));

    if (!(numbered ? numberedFirstLine(line) : bankedFirstLine(line)))
        return Next::EndOfPass;

    Texto.setCaption(" ");
    Banco_actual.setVisible(true);
    Banco_actual.setEnabled(true);
    Barra.setVisible(true);
    Barra.setEnabled(true);
    Label2.setVisible(true);
    numero_linea = 1;
    setMousePointer(13);

    LoopOutcome outcome = numbered ? numberedLoop(line) : bankedLoop(line);
    if (outcome == LoopOutcome::EndOfPass)
        return Next::EndOfPass;
    if (outcome == LoopOutcome::Abandon)
        return closeSerialLoad();
    if (numbered && es_serie_w && (nivel == 1 || nivel == 2))
        return macStep();
    return finishSerialLoad();
}

// Steps 15 and 16: the full bar, the good news, and the clean-up.
Firmcast::Next Firmcast::finishSerialLoad() {
    bool numbered = es_serie_n || es_serie_w || es_tr8200;
    if (numbered && tipo_conexion != 1) {
        BarraEth.setValue(BarraEth.max());
    } else {
        Barra.setValue(Barra.max());
    }
    paradibu();
    escala_lista_ = true;
    services_.dialogs.msgBox("The scale is ready", mb::kInformation, "FIRMCAST OK");
    return closeSerialLoad();
}

Firmcast::Next Firmcast::closeSerialLoad() {
    setMousePointer(1);
    services_.files.close(kFile);
    acaba2();
    return Next::EndOfPass;
}

// A Serie_W scale at levels 1 and 2 is told the load has ended; if it asks
// for a MAC address it gets the next one from the database, and the
// operator records it.
Firmcast::Next Firmcast::macStep() {
    LinePanel line = linePanel();
    auto send = [&line] { return EnviaLineaNumerada(line); };
    numero_linea += 1;
    linea_fichero = ":0000006799";
    Texto.setCaption(linea_fichero);
    pide_mac = kFalse;
    if (!send())
        return Next::EndOfPass;
    if (!pide_mac)
        return finishSerialLoad();
    mac_actual = hooks_.DameMACAddress ? hooks_.DameMACAddress(*this) : std::string();
    // A fixed pause, which the display driver's event may cut short.
    EsperaEventoRecursos(common_, 6000);
    if (mac_actual.empty()) {
        services_.dialogs.msgBox("There is no more MACs available");
        Tiempo1.setEnabled(true);
        return closeSerialLoad();
    }
    linea_fichero =
        ":06000068" + mac_actual + DameCheckSum("06000068" + mac_actual, services_.dialogs);
    Texto.setCaption(linea_fichero);
    if (!send())
        return Next::EndOfPass;
    Tiempo1.setEnabled(false);
    if (hooks_.frmDatosBalanza)
        hooks_.frmDatosBalanza(*this);
    return finishSerialLoad();
}

}  // namespace fc
