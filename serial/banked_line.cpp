#include "serial/banked_line.h"

#include "platform/controls.h"
#include "platform/dialogs.h"
#include "platform/file_table.h"
#include "platform/pump.h"
#include "platform/runtime_error.h"
#include "platform/serial_line.h"
#include "platform/window_timer.h"
#include "serial/answer_wait.h"

namespace fc {

namespace {

std::string one(char c) {
    return std::string(1, c);
}

// Waits for any answer; on a time-out reports False, else reads the answer.
bool waitForAnswer(LinePanel& panel, int timeoutMs, std::string& answer) {
    SerialPanel& s = panel.serial;
    if (!espera_respuesta(s, timeoutMs, al_menos(s, 1)))
        return false;
    answer = s.Linea.input();
    return true;
}

void sendLine(LinePanel& panel) {
    SerialPanel& s = panel.serial;
    s.Linea.input();
    s.Linea.output(panel.linea_fichero + one(banked::kLineEnd));
    drena_salida(s);
}

Flag failStep(LinePanel& panel, const std::string& message) {
    panel.paradibu();
    panel.serial.dialogs.msgBox(message);
    panel.acaba2();
    return kFalse;
}

// A sender that timed out closes the line and then reads it all the same:
// the read of a closed port is a run-time error, and the driver's fatal trap
// ends the program. Operators know that a device gone silent mid-load ends
// the session.
[[noreturn]] void timedOutMidLoad(LinePanel& panel, const std::string& message) {
    panel.paradibu();
    panel.serial.dialogs.msgBox(message);
    panel.acaba();
    panel.serial.Linea.input();
    throw RuntimeError(err::kPortNotOpen);  // not reached: the read above throws
}

Flag refusedMidLoad(LinePanel& panel, const std::string& message) {
    panel.paradibu();
    panel.serial.dialogs.msgBox(message);
    panel.acaba();
    return kFalse;
}

// The number at the start of a caption, as the run time's Val reads it.
Integer captionValue(const Label& label) {
    Integer value = 0;
    for (char c : label.caption()) {
        if (c < '0' || c > '9')
            break;
        value = static_cast<Integer>(value * 10 + (c - '0'));
    }
    return value;
}

int digitValue(char c) {
    if (c < '0' || c > '9')
        throw RuntimeError(err::kTypeMismatch);
    return c - '0';
}

}  // namespace

Integer bancoDeLinea(const std::string& linea) {
    char high = linea.size() >= 6 ? linea[5] : ' ';
    char low = linea.size() >= 7 ? linea[6] : ' ';
    Integer bank = static_cast<Integer>((digitValue(high) & 15) * 2);
    if (low < '0' || low > '7')
        bank += 1;
    return bank;
}

Flag testk1(LinePanel& panel) {
    SerialPanel& s = panel.serial;
    if (!s.Linea.portOpen())
        panel.lanza_linea();
    s.Linea.input();
    s.Linea.output(one(banked::kProbe));
    s.timerout.setEnabled(false);
    std::string answer;
    if (!waitForAnswer(panel, 1000, answer))
        return kFalse;
    return toFlag(!answer.empty() && answer[0] == banked::kProbe);
}

Flag EnviaLineaBanco(LinePanel& panel) {
    sendLine(panel);
    std::string answer;
    if (!waitForAnswer(panel, 5000, answer))
        timedOutMidLoad(panel, "La balanza, no respondio al mensaje");
    if (answer != one(banked::kLineTaken))
        return refusedMidLoad(panel, "La balanza no ha respondido a la l\xC3\xADnea");
    return kTrue;
}

Flag GrabaBanco(LinePanel& panel) {
    SerialPanel& s = panel.serial;
    s.Linea.output(one(banked::kRecordBank));
    s.timerout.setEnabled(false);
    std::string answer;
    if (!waitForAnswer(panel, 10000, answer)) {
        timedOutMidLoad(panel, "La balanza, no respondio a la grabaci\xC3\xB3n del banco");
    }
    if (answer != one(banked::kBankRecorded)) {
        panel.paradibu();
        s.dialogs.msgBox("La balanza no ha respondido correctamente al grabado del banco");
        panel.Tiempo1.setEnabled(true);
        panel.acaba();
        return kFalse;
    }
    return kTrue;
}

Flag FinFirmcast(LinePanel& panel) {
    panel.serial.Linea.output(one(banked::kEndOfLoad));
    std::string answer;
    if (!waitForAnswer(panel, 10000, answer)) {
        // The words say the opposite of what happened; operators' notes refer
        // to them as they are.
        timedOutMidLoad(panel, "La balanza, admitio el comando FIN DE FIRMCAST");
    }
    if (answer != one(banked::kLoadEnded)) {
        return refusedMidLoad(panel, "La balanza no ha respondido al comando FIN DE FIRMCAST");
    }
    return kTrue;
}

Flag bankedFirstLine(LinePanel& panel) {
    SerialPanel& s = panel.serial;
    sendLine(panel);
    std::string answer;
    if (!waitForAnswer(panel, 5000, answer)) {
        return failStep(panel, "The scale answer to the first line it was not O.K.");
    }
    if (answer != one(banked::kFirstLineTaken))
        return failStep(panel, "THe scale do not accept the first line");
    panel.Texto.setCaption("Please Wait, erasing FLASH ROM");
    s.Linea.input();
    s.Linea.output(one(banked::kErase));
    if (!waitForAnswer(panel, 65535, answer)) {
        return failStep(panel, "The scale is in a infinite loop erasing the FLASH ROM");
    }
    if (answer != one(banked::kErased)) {
        return failStep(panel, "The clear FLASH ROM command was not valid for the scale");
    }
    return kTrue;
}

LoopOutcome bankedLoop(LinePanel& panel) {
    SerialPanel& s = panel.serial;
    panel.Label2.setCaption("Bank number");
    for (;;) {
        panel.linea_fichero = panel.files.lineInput(panel.fileNumber);
        panel.inicio_linea = panel.linea_fichero.substr(0, 3);
        if (panel.files.eof(panel.fileNumber)) {
            if (panel.inicio_linea == "S80" || panel.inicio_linea == "S90") {
                if (!FinFirmcast(panel))
                    return LoopOutcome::EndOfPass;
                panel.paradibu();
                return LoopOutcome::Success;
            }
            panel.files.close(panel.fileNumber);
            panel.paradibu();
            s.dialogs.msgBox("The end of file is not valid");
            panel.Tiempo1.setEnabled(true);
            return LoopOutcome::Abandon;
        }
        Integer bank = bancoDeLinea(panel.linea_fichero);
        if (bank != (captionValue(panel.Banco_actual) & 15)) {
            if (!GrabaBanco(panel))
                return LoopOutcome::EndOfPass;
        }
        panel.Banco_actual.setCaption(std::to_string(bank));
        panel.Texto.setCaption("Line message: " + panel.linea_fichero);
        panel.Barra.setValue(panel.Barra.value() + static_cast<Long>(panel.linea_fichero.size()));
        if (!EnviaLineaBanco(panel))
            return LoopOutcome::EndOfPass;
        // Once between lines, without waiting: the window stays alive and
        // the next line goes out at once.
        s.pump.doPendingEvents();
    }
}

}  // namespace fc
