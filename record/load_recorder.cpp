#include "record/load_recorder.h"

#include <utility>

#include "control/catalogue.h"
#include "control/firmcast_form.h"
#include "platform/drives.h"
#include "platform/native_path.h"

namespace fc {

namespace {

std::optional<std::string> unlessEmpty(const std::string& text) {
    if (text.empty())
        return std::nullopt;
    return text;
}

// The file's own name, after the last "\" or "/".
std::string fileName(const std::string& path) {
    const std::size_t slash = path.find_last_of("\\/");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

}  // namespace

LoadRecorder::LoadRecorder(Firmcast& form, RecordStation& station, std::string path)
    : form_(form), station_(station), path_(std::move(path)) {
    form_.hooks().scaleTurnStarted = [this](Firmcast&, int i) { turnStarted(i); };
    form_.hooks().scaleTurnEnded = [this](Firmcast&, int i) { turnEnded(i); };
    form_.hooks().serialLoadStarted = [this](Firmcast&) { serialStarted(); };
    form_.hooks().serialLoadEnded = [this](Firmcast&, bool ready) { serialEnded(ready); };
}

void LoadRecorder::boxShown(const std::string& text) {
    lastBox_ = text;
}

void LoadRecorder::begin() {
    start_ = station_.utcNow();
    startMicros_ = form_.services().pump.nowMicros();
    checksumAnswers_ = form_.respuesta_balanza.respuestas_checksum;
    form_.numero_serie.clear();
    lastBox_.clear();
}

void LoadRecorder::turnStarted(int i) {
    if (i == 0)
        ++pass_;
    begin();
}

void LoadRecorder::turnEnded(int i) {
    append(recordOf(i));
}

void LoadRecorder::serialStarted() {
    ++serialLoads_;
    begin();
}

void LoadRecorder::serialEnded(bool ready) {
    append(serialRecord(ready));
}

void LoadRecorder::append(const LoadRecord& record) {
    std::string why;
    if (!station_.appendLine(path_, recordJson(record), why) && onWriteFailure)
        onWriteFailure(why);
}

LoadRecord LoadRecorder::commonPart() {
    LoadRecord r;
    r.start = start_;
    r.end = station_.utcNow();
    r.station = station_.stationName();
    r.level = std::to_string(form_.nivel);
    r.model = form_.modelo_elegido;
    if (r.model >= 0 && r.model < kCatalogueSize)
        r.modelName = catalogueEntry(r.model).device;
    takeFileFacts(r);
    r.durationMs = (form_.services().pump.nowMicros() - startMicros_) / 1000;
    return r;
}

LoadRecord LoadRecorder::serialRecord(bool ready) {
    LoadRecord r = commonPart();
    r.way = "rs232";
    r.port = "COM" + std::to_string(form_.puerto_com);
    r.pass = serialLoads_;
    if (form_.pide_mac)
        r.macNew = registerMac(form_.mac_actual);
    r.serial = unlessEmpty(form_.numero_serie);
    r.ok = ready;
    r.info = lastBox_;
    return r;
}

LoadRecord LoadRecorder::recordOf(int i) {
    const auto at = static_cast<std::size_t>(i);
    LoadRecord r = commonPart();
    r.way = "ethernet";
    r.port = at < form_.lista_balanzas.size() ? form_.lista_balanzas[at] : "";
    r.scale = i + form_.primera_balanza;
    r.pass = pass_;
    if (form_.fichero_procesado)
        r.imageChecksum = form_.checksum_memoria;
    if (form_.respuesta_balanza.respuestas_checksum != checksumAnswers_)
        r.scaleChecksum = form_.respuesta_balanza.checksum_balanza;
    if (!form_.mac_tabla.empty())
        r.macOld = registerMac(form_.mac_tabla);
    if (form_.pide_mac)
        r.macNew = registerMac(form_.mac_actual);
    r.serial = unlessEmpty(form_.numero_serie);
    r.ok = at < form_.estado_balanzas.size() && form_.estado_balanzas[at];
    r.info = at < form_.resultado_balanzas.size() ? form_.resultado_balanzas[at] : "";
    return r;
}

void LoadRecorder::takeFileFacts(LoadRecord& r) {
    r.firmware = fileName(form_.fichero_firmware);
    if (factsOf_ != form_.fichero_firmware) {
        factsOf_ = form_.fichero_firmware;
        const std::string host = form_.services().drives.hostPath(form_.fichero_firmware);
        facts_ = station_.fileFacts(host.empty() ? nativePath(form_.fichero_firmware) : host);
    }
    if (facts_) {
        r.firmwareSize = facts_->size;
        r.firmwareSha256 = facts_->sha256;
    }
}

}  // namespace fc
