#include "serial/numbered_line.h"

#include <cstdio>

#include "platform/controls.h"
#include "platform/dialogs.h"
#include "platform/file_table.h"
#include "platform/pump.h"
#include "platform/serial_line.h"
#include "platform/window_timer.h"
#include "serial/answer_wait.h"

namespace fc {

namespace {

std::string upperHex(unsigned long value) {
    char text[16];
    std::snprintf(text, sizeof text, "%lX", value);
    return text;
}

// The record type decides how many bytes the device answers: one for a data
// record, two for any other.
int expectedAnswerBytes(const std::string& linea) {
    return (linea.size() >= 9 && linea[8] == '0') ? 1 : 2;
}

bool isEndCommand(LinePanel& panel) {
    return panel.linea_fichero == numbered::kEndCommand && panel.es_serie_w;
}

// Sends `text`, arms the timer for `interval` and polls until exactly two
// bytes are there: the connect steps wait this way.
void sendAndWaitForTwo(LinePanel& panel, const std::string& text, int interval, bool resetFlag) {
    SerialPanel& s = panel.serial;
    s.Linea.output(text);
    s.timerout.setEnabled(false);
    s.timerout.setInterval(interval);
    s.Linea.setInBufferCount(0);
    if (resetFlag)
        s.tiempo_agotado = kFalse;
    s.timerout.setEnabled(true);
    while (s.Linea.inBufferCount() != 2 && s.tiempo_agotado == kFalse) s.pump.doEvents();
    s.timerout.setEnabled(false);
}

Flag failConnect(LinePanel& panel, const std::string& message) {
    panel.paradibu();
    panel.serial.dialogs.msgBox(message);
    panel.acaba2();
    return kFalse;
}

}  // namespace

std::string cabeceraNumerada(Long numero) {
    std::string digits = upperHex(static_cast<unsigned long>(numero));
    if (digits.size() < 4)
        digits = std::string(4 - digits.size(), '0') + digits;
    return "H" + digits;
}

Flag EnviaLineaNumerada(LinePanel& panel) {
    SerialPanel& s = panel.serial;
    const std::string head = cabeceraNumerada(panel.numero_linea);
    for (int tries = 0;; ++tries) {
        s.Linea.setInBufferCount(0);
        s.Linea.output(head + panel.linea_fichero);
        drena_salida(s);
        const int expected = expectedAnswerBytes(panel.linea_fichero);
        s.tiempo_agotado = kFalse;
        s.timerout.setEnabled(false);
        s.timerout.setInterval(numbered::kLineTimeout);
        s.timerout.setEnabled(true);
        while (s.Linea.inBufferCount() < expected && s.tiempo_agotado == kFalse) s.pump.doEvents();
        const std::string answer = s.Linea.input().substr(0, 1);
        s.timerout.setEnabled(false);

        if (answer.empty()) {
            panel.paradibu();
            // Silence after the end command: the scale wants no address.
            if (isEndCommand(panel))
                return kTrue;
            s.dialogs.msgBox("The scale does not answer");
            panel.acaba();
            return kFalse;
        }
        const char code = answer[0];
        if (code != numbered::kAck && code != numbered::kRefused &&
            code != numbered::kAckWantsMac) {
            panel.paradibu();
            s.dialogs.msgBox("The scale gives a bad answer = " +
                             upperHex(static_cast<unsigned char>(code)));
            panel.Tiempo1.setEnabled(true);
            return kFalse;
        }
        if (code == numbered::kRefused) {
            if (tries < numbered::kMaxResends)
                continue;
            panel.paradibu();
            s.dialogs.msgBox("The scale does not accept the line");
            panel.acaba();
            return kFalse;
        }
        if (isEndCommand(panel))
            panel.pide_mac = toFlag(code == numbered::kAckWantsMac);
        return kTrue;
    }
}

Flag numberedConnect(LinePanel& panel) {
    SerialPanel& s = panel.serial;
    if (!s.Linea.portOpen())
        s.Linea.setPortOpen(true);
    const bool longWait = panel.es_serie_w || panel.es_tr8200;
    sendAndWaitForTwo(panel, numbered::kHandshake, longWait ? numbered::kLongestWait : 10000,
                      false);
    if (s.tiempo_agotado)
        return failConnect(panel, "No answer from scale, check the cable or scale");
    if (s.Linea.input().substr(0, 1) != std::string(1, numbered::kAck)) {
        return failConnect(
            panel, "The answer from the scale is not valid, please check the scale version");
    }
    return kTrue;
}

Flag numberedFirstLine(LinePanel& panel) {
    SerialPanel& s = panel.serial;
    sendAndWaitForTwo(panel, "H0001" + panel.linea_fichero, numbered::kLongestWait, true);
    if (s.tiempo_agotado)
        return failConnect(panel, "The scale is not answering to the first line");
    if (s.Linea.input().substr(0, 1) != std::string(1, numbered::kAck)) {
        return failConnect(panel, "The scale gives a bad answer to the first line");
    }
    return kTrue;
}

LoopOutcome numberedLoop(LinePanel& panel) {
    SerialPanel& s = panel.serial;
    panel.Label2.setCaption("Line number");
    for (;;) {
        panel.numero_linea += 1;
        panel.linea_fichero = panel.files.lineInput(panel.fileNumber);
        panel.inicio_linea =
            panel.linea_fichero.size() >= 9 ? panel.linea_fichero.substr(8, 1) : "";
        if (panel.files.eof(panel.fileNumber)) {
            if (panel.inicio_linea == "1") {
                panel.linea_ok = EnviaLineaNumerada(panel);
                return panel.linea_ok ? LoopOutcome::Success : LoopOutcome::EndOfPass;
            }
            panel.files.close(panel.fileNumber);
            panel.paradibu();
            s.dialogs.msgBox("The end of file is not valid");
            panel.Tiempo1.setEnabled(true);
            if (!panel.linea_ok)
                s.dialogs.msgBox("Error Sending Error", mb::kCritical, kAppTitle);
            return LoopOutcome::Abandon;
        }
        panel.Banco_actual.setCaption(std::to_string(panel.numero_linea));
        panel.Texto.setCaption("Line message: " + panel.linea_fichero);
        panel.Barra.setValue(panel.Barra.value() + static_cast<Long>(panel.linea_fichero.size()));
        panel.linea_ok = EnviaLineaNumerada(panel);
        if (!panel.linea_ok) {
            panel.paradibu();
            s.dialogs.msgBox("Error Sending Error", mb::kCritical, kAppTitle);
            return LoopOutcome::Abandon;
        }
        // Once between lines, without waiting: the window stays alive and
        // the next line goes out at once.
        s.pump.doPendingEvents();
    }
}

}  // namespace fc
