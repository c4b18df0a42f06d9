// The scale list of the Ethernet way and config.ini, the file that keeps it
// and the scales' TCP port between runs.
#include "common/file_tests.h"
#include "common/ini.h"
#include "control/firmcast_form.h"
#include "control/text_numbers.h"

namespace fc {

namespace {

constexpr Long kPuertoPorDefecto = 3000;
// A count read from the file must stay below this; the keyboard allows one
// more, so a list of twenty that was saved is refused on reading.
constexpr Integer kLimiteFichero = 20;

}  // namespace

// Wires the editing of the scale list to its handlers.
void Firmcast::useScaleList() {
    cmbbalanza.onClick = [this] { guard([this] { cmbbalanza_Click(); }); };
    Text1.onKeyPress = [this](Integer& k) { guard([this, &k] { Text1_KeyPress(k); }); };
    cmbbalanza.onKeyPress = [this](Integer& k) { guard([this, &k] { cmbbalanza_KeyPress(k); }); };
    txtDirTCP.onKeyPress = [this](Integer& k) { guard([this, &k] { txtDirTCP_KeyPress(k); }); };
}

std::string Firmcast::configFile() const {
    return services_.programFolder + "\\config.ini";
}

// The driver has emptied Text1 and cut the list to one empty entry before.
void Firmcast::CargaInfoIni() {
    puerto_tx = kPuertoPorDefecto;
    const std::string fichero = configFile();
    if (!ExisteFichero(common(), fichero))
        return;
    Text1.setText(LeeClaveIni(common(), fichero, "Balanzas", "Numero", ""));
    if (!Text1.text().empty())
        leeDirecciones(fichero);
    leePuerto(fichero);
}

// The position of a pair in the file decides its index; the number in its
// key is only the label the combo shows.
void Firmcast::leeDirecciones(const std::string& fichero) {
    Integer numero = enteroDeTexto(Text1.text());
    if (numero >= kLimiteFichero) {
        Text1.setText("");
        return;
    }
    // A count of 0 would leave the list with no index at all.
    if (numero < 1)
        throw RuntimeError(err::kSubscriptOutOfRange);
    lista_balanzas.assign(numero, "");
    auto pares = LeeSeccionIni(common(), fichero, "Direcciones");
    if (!pares)
        return;
    cmbbalanza.clear();
    const int cuantos = static_cast<int>(pares->size() / 2);
    for (int p = 0; p < cuantos; ++p) {
        const std::string& clave = (*pares)[2 * p];
        cmbbalanza.addItem(clave.size() > 3 ? clave.substr(3) : "");
        cmbbalanza.setItemData(cmbbalanza.listCount() - 1, p);
        // More pairs than the count is a fault of the file.
        if (p >= static_cast<int>(lista_balanzas.size()))
            throw RuntimeError(err::kSubscriptOutOfRange);
        lista_balanzas[p] = (*pares)[2 * p + 1];
    }
    PrepararListaBalanzas(lstBalanzas, cuantos);
    cmbbalanza.setListIndex(0);
}

// A port that is not a number keeps the default, without a word.
void Firmcast::leePuerto(const std::string& fichero) {
    std::string tx = LeeClaveIni(common(), fichero, "Puertos", "Tx", "");
    if (esNumerico(tx))
        puerto_tx = largoDeTexto(tx);
}

// Only the Save Config button saves: the list is never kept unasked. The
// section of addresses is written afresh after the count, so that it holds
// exactly the scales of the list.
void Firmcast::GuardaInfoIni() {
    const std::string fichero = configFile();
    BorraClaveIni(common(), fichero, "Direcciones", "");
    EscribeClaveIni(common(), fichero, "Balanzas", "Numero", Text1.text());
    for (std::size_t i = 0; i < lista_balanzas.size(); ++i) {
        EscribeClaveIni(common(), fichero, "Direcciones", "dir" + std::to_string(i + 1),
                        direccionMostrada(static_cast<int>(i)));
    }
    EscribeClaveIni(common(), fichero, "Puertos", "Tx", std::to_string(puerto_tx));
}

// What the list view shows as the address of a row: the file gets that. A
// row the view does not have is the list view's own error.
std::string Firmcast::direccionMostrada(int fila) const {
    const auto& filas = lstBalanzas.rows();
    if (fila >= static_cast<int>(filas.size()))
        throw RuntimeError(35600, "Index out of bounds");
    return filas[fila].size() > 1 ? filas[fila][1] : "";
}

// Errors are passed over here: a row past the end of the list gets no address.
void Firmcast::PrepararListaBalanzas(ListView& lista, int cuantos) {
    lista.setFullRowSelect(true);
    // The third column tells how each scale's last load ended.
    lista.setColumns({"Scale", "IP Address", "Result"});
    lista.setColumnWidths({700, 1500, 4000});
    lista.clearRows();
    for (int i = 1; i <= cuantos; ++i) {
        bool hay = i - 1 < static_cast<int>(lista_balanzas.size());
        lista.addRow({std::to_string(i), hay ? lista_balanzas[i - 1] : ""});
    }
    if (cuantos >= 1)
        lista.setSelectedRow(0);
}

void Firmcast::CargaComboBalanzas() {
    cmbbalanza.clear();
    for (std::size_t i = 0; i < lista_balanzas.size(); ++i) {
        cmbbalanza.addItem(std::to_string(i + 1));
        cmbbalanza.setItemData(static_cast<int>(i), static_cast<Long>(i));
    }
    cmbbalanza.setListIndex(0);
}

}  // namespace fc
