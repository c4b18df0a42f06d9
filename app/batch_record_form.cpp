#include "app/batch_record_form.h"

#include "control/firmcast_form.h"
#include "operator/operator_script.h"
#include "operator/recording_dialogs.h"

namespace fc::batch {

namespace {
constexpr const char* kRecordForm = "frmDatosBalanza";
constexpr const char* kSerialField = "txtSerialNumber";
}  // namespace

RecordFormAnswers::RecordFormAnswers(Firmcast& form, RecordingDialogs& dialogs,
                                     const std::vector<std::string>& serials, Stop stop)
    : form_(form), dialogs_(dialogs), serials_(serials), stop_(std::move(stop)) {}

bool RecordFormAnswers::answer() {
    Screen* open = dialogs_.modalScreen();
    if (open == nullptr || open->name() != kRecordForm || !open->loaded())
        return false;
    if (open == answered_) {
        // Still open after its answer: it refused it.
        stop_(whichScale() + " needed a serial number: the record form refused \"" +
              open->find(kSerialField)->caption() + "\"");
        return true;
    }
    answered_ = open;
    // Once it has closed, the next form (perhaps at the same address) is new.
    open->addObserver([this](Screen& s) {
        if (!s.loaded() && answered_ == &s)
            answered_ = nullptr;
    });
    if (used_ < serials_.size()) {
        operatorScan(*open, kSerialField, serials_[used_++]);
    } else {
        operatorClick(*open, "cmdAceptar");
    }
    return true;
}

std::string RecordFormAnswers::whichScale() const {
    if (form_.tipo_conexion != 0)
        return "the scale on COM" + std::to_string(form_.puerto_com);
    const auto i = static_cast<std::size_t>(form_.balanza_actual);
    const std::string ip = i < form_.lista_balanzas.size() ? form_.lista_balanzas[i] : "";
    return "scale " + std::to_string(static_cast<int>(i) + form_.primera_balanza) + " (" + ip + ")";
}

bool reportScales(const Firmcast& form, std::ostream& out) {
    bool allOk = !form.lista_balanzas.empty();
    for (std::size_t i = 0; i < form.lista_balanzas.size(); ++i) {
        const bool ok = i < form.estado_balanzas.size() && form.estado_balanzas[i];
        const std::string text = i < form.resultado_balanzas.size() ? form.resultado_balanzas[i]
                                                                    : form.lblInformacion.caption();
        out << "scale " << static_cast<int>(i) + form.primera_balanza << ": "
            << form.lista_balanzas[i] << " " << (ok ? "ok" : "failed") << ": " << text << std::endl;
        allOk = allOk && ok;
    }
    return allOk;
}

}  // namespace fc::batch
