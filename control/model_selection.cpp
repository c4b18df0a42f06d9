// Choosing a model on step 0: the pictures, the group buttons, the highlight,
// and the way and port buttons of step 1.
#include "control/catalogue.h"
#include "control/firmcast_form.h"
#include "platform/dialogs.h"

namespace fc {

// Clears the model flags and shows which model was chosen last. The picture
// of code 8 is neither reset nor highlighted here: that is how the step has
// always looked, and operators know it.
void Firmcast::EligeModelo(const std::string& codigo) {
    clearModelFlags();
    for (PictureBox* p : {&Picture3, &Picture2, &Picture8, &Picture4, &Picture5, &Picture7,
                          &Picture6, &Picture12}) {
        p->setBackColor(kColourWhite);
    }
    for (int code : {0, 1, 2, 3, 5, 6, 4, 7}) {
        if (codigo != std::to_string(code))
            continue;
        pictureOf(code).setBackColor(kColourHighlight);
        ModelGroup group = catalogueEntry(code).group;
        if (group == ModelGroup::Scales)
            optBalanzas_Click();
        if (group == ModelGroup::Labellers)
            optEtiquetadoras_Click();
        if (group == ModelGroup::Visors)
            optVisores_Click();
        break;
    }
    PictureVisualizar.setVisible(false);
}

void Firmcast::highlightOnly(int code) {
    for (int other = 0; other < kCatalogueSize; ++other)
        pictureOf(other).setBackColor(kColourWhite);
    pictureOf(code).setBackColor(kColourHighlight);
}

void Firmcast::PictureModel_Click(int code) {
    if (code == 3) {
        startGseries();
        highlightOnly(code);
        return;
    }
    if (code == 7) {
        highlightOnly(code);
        modelo_elegido = 7;
        cmdAdelanteVisor();
        return;
    }
    raiseModelFlag(code);
    highlightOnly(code);
    for (Frame* f : {&frOption, &frEtiquetadoras, &frBalanzas, &frVisores}) f->setVisible(false);
    showChosenPicture(pictureOf(code));
    frComParameters.setEnabled(false);
    frComParameters.setVisible(false);
    if (!catalogueEntry(code).ethernet)
        transporte_elegido = 1;
    unidad_elegida.clear();
    modelo_elegido = static_cast<Integer>(code);
    paso_asistente = 1;
    if (code == 0) {
        cmdDisplayGrafico.setVisible(true);
        cmdDisplayGrafico.setEnabled(true);
    }
}

// The Serie_G scales are loaded by their own tool: choosing them starts it
// and leaves the wizard on the model step.
void Firmcast::startGseries() {
    launchGseries();
    modelo_elegido = 3;
}

// The tool's command line is the program's folder, its name and the level as
// one digit. Nothing checks whether a copy is running already.
void Firmcast::launchGseries() {
    std::string commandLine =
        services_.programFolder + "\\Gseries.exe " + std::string(1, static_cast<char>('0' | nivel));
    proceso_externo = hooks_.startProgram ? hooks_.startProgram(commandLine) : 0;
    lanzado_gseries = kTrue;
    ++gseriesLaunches_;
}

int Firmcast::modelCodeOfFlags() const {
    if (es_serie_w)
        return 0;
    if (es_serie_n)
        return 1;
    if (es_serie_h)
        return 2;
    if (es_serie_g)
        return 3;
    if (es_matrix4000)
        return 4;
    if (es_tr6100)
        return 5;
    if (es_tr8200)
        return 6;
    if (es_mv510)
        return 7;
    return -1;
}

void Firmcast::optBalanzas_Click() {
    frBalanzas.setVisible(true);
    frEtiquetadoras.setVisible(false);
    frVisores.setVisible(false);
}

void Firmcast::optEtiquetadoras_Click() {
    frBalanzas.setVisible(false);
    frEtiquetadoras.setVisible(true);
    frVisores.setVisible(false);
}

void Firmcast::optVisores_Click() {
    frBalanzas.setVisible(false);
    frEtiquetadoras.setVisible(false);
    frVisores.setVisible(true);
}

void Firmcast::optrs232_Click() {
    Frame1.setEnabled(true);
    tipo_conexion = 1;
}

void Firmcast::optEthernet_Click() {
    Frame1.setEnabled(false);
    tipo_conexion = 0;
}

void Firmcast::OptionPort_Click(Integer port) {
    puerto_com = port;
}

}  // namespace fc
