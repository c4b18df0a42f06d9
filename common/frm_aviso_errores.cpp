#include "common/frm_aviso_errores.h"

#include "common/common_module.h"
#include "common/standard_handler.h"
#include "platform/dialogs.h"

namespace fc {

frmAvisoErrores::frmAvisoErrores(CommonModule& c, ContactoServicio contacto)
    : Screen("frmAvisoErrores"), c_(c) {
    setCaption("Atención");
    lblAviso.setCaption(textoAviso(contacto));
    Image2.setPicture("warning");
    cmdAceptar.setCaption("Aceptar");
    cmdCancelar.setCaption("Cancelar");
    cmdAceptar.onClick = [this] { cmdAceptar_Click(); };
    cmdCancelar.onClick = [this] { cmdCancelar_Click(); };
}

std::string frmAvisoErrores::textoAviso(const ContactoServicio& contacto) {
    std::string who = contacto.nombre;
    if (!contacto.telefono.empty())
        who += " on " + contacto.telefono;
    // "ocurred" is the notice's own spelling.
    return "An error has ocurred in your application. Please contact " + who +
           ". Your scale's MAC address is not valid.";
}

void frmAvisoErrores::Mostrar() {
    Form_Load();
    c_.services.dialogs.showModal(*this);
}

void frmAvisoErrores::Form_Load() {
    withStandardHandler(c_, "frmAvisoErrores_Load", [this] {
        top_ = kTop;
        // Towards the right of the display, 1000 twips in from its edge.
        left_ = screenWidthTwips - (kWidth + 1000);
    });
}

void frmAvisoErrores::cmdAceptar_Click() {
    unload();
}

void frmAvisoErrores::cmdCancelar_Click() {
    unload();
}

}  // namespace fc
