// The screen's load: the database check, the lists and their defaults, the
// way and the start folder.
#include <cctype>

#include "common/common_module.h"
#include "common/database_access.h"
#include "common/file_tests.h"
#include "common/padding.h"
#include "common/string_table.h"
#include "display/display_crc.h"
#include "display/frm_carga_display_grafico.h"
#include "platform/drives.h"
#include "platform/pump.h"

namespace fc {

namespace {

constexpr const char* kConsultaVersion =
    "Select ValorParametro from DAT_Parametro where Parametro = 'VERSION'";

std::string recorta(const std::string& texto) {
    std::size_t i = texto.find_first_not_of(' ');
    if (i == std::string::npos)
        return "";
    return texto.substr(i, texto.find_last_not_of(' ') - i + 1);
}

}  // namespace

void frmCargaDisplayGrafico::Form_Load() {
    common_.base_recursos = 3000;
    setCaption(caption() + " A");
    bd = AbrirBD(common_, NombrarBD(common_, "\\Database\\", "KorvaFirmcast.mdb"));
    if (!bd)
        return;
    leeNivel();
    tipo_conexion = 0;
    llenaListas();
    Barra.setValue(Barra.min());
    Banco_actual.setCaption("");
    cmdAtras.setEnabled(true);
    cmdAdelante.setEnabled(true);
    frComParameters.setVisible(true);
    frComParameters.setEnabled(true);
    frInfoComunicacion.setVisible(false);
    transporte_elegido = 0;
    puerto_com = 0;
    tiempo_agotado = kFalse;
    optEthernet.setEnabled(true);
    optEthernet.setValue(true);
    optrs232.setValue(false);
    Texto.setVisible(false);
    muestraCarpetaInicial();
    cmbvelocidades.setListIndex(4);
    services_.pump.doPendingEvents();
    LoadArray(tabla_crc, constantesCrc());
}

// The level stays 0 on every road; reading the parameter only shows a bad
// database early.
void frmCargaDisplayGrafico::leeNivel() {
    nivel = 0;
    if (!linea_comandos.empty())
        return;
    std::unique_ptr<Recordset> tabla = bd->openRecordset(kConsultaVersion);
    std::string valor = recorta(tabla->field("ValorParametro").value_or(""));
    char letra = valor.empty() ? ' ' : static_cast<char>(std::toupper(valor[0]));
    CierraTabla(common_, *tabla);
    if (letra == '0' || letra == 'D')
        nivel = 0;
}

void frmCargaDisplayGrafico::llenaListas() {
    const char* velocidades[] = {"115200", "57600", "38400", "28800", "19200",
                                 "14400",  "9600",  "2400",  "1200"};
    cmbvelocidades.clear();
    for (int i = 0; i < 9; ++i) {
        cmbvelocidades.addItem(velocidades[i]);
        cmbvelocidades.setItemData(i, i);
    }
    nbits.clear();
    nbits.addItem("7");
    nbits.addItem("8");
    nbits.setListIndex(1);
    cboParidad.clear();
    cboParidad.addItem(" ");
    for (Integer n = 53; n <= 57; ++n) cboParidad.addItem(TextoRecurso(common_, n));
    cboParidad.setListIndex(0);
    cmbDirLogica.clear();
    for (int n = 0; n <= 49; ++n)
        cmbDirLogica.addItem(RellenarIzquierda("0", std::to_string(n), 2));
    cmbDirLogica.setListIndex(0);
    TxtPort.setText("3000");
}

void frmCargaDisplayGrafico::muestraCarpetaInicial() {
    frDirectorio.setVisible(true);
    for (Control* lista : std::initializer_list<Control*>{&Drive1, &Dir1, &File1})
        lista->setEnabled(true);
    const std::string inicio = nivel == 1 ? "T:\\" : "C:\\";
    Drive1.clear();
    for (char letra : services_.drives.existingDrives())
        Drive1.addItem(std::string(1, letra) + ":");
    Drive1.setDrive(std::string(1, static_cast<char>(std::tolower(inicio[0]))) + ":");
    Dir1.setPath(inicio);
    if (File1.listCount() > 0)
        File1.setListIndex(File1.listCount() > 1 ? 1 : 0);
}

}  // namespace fc
