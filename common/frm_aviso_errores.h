// The notice shown when a scale's MAC address turns out not to be valid: a
// modal window captioned "Atención" with a fixed text for the operator and
// two buttons that both just close it.
#pragma once

#include <string>

#include "platform/controls.h"
#include "platform/screen.h"
#include "platform/vb_types.h"

namespace fc {

struct CommonModule;

// Who the operator is told to call; a setting of the site.
struct ContactoServicio {
    std::string nombre = "the technical service of your supplier";
    std::string telefono;  // left out of the text when empty
};

class frmAvisoErrores : public Screen {
  public:
    explicit frmAvisoErrores(CommonModule& c, ContactoServicio contacto = {});

    // Loads the form and shows it modally, until a button closes it.
    void Mostrar();

    void Form_Load();
    void cmdAceptar_Click();
    void cmdCancelar_Click();

    // Place and size of the window, in twips.
    Long top() const { return top_; }
    Long left() const { return left_; }
    static constexpr Long kWidth = 6000;
    static constexpr Long kHeight = 3300;
    static constexpr Long kTop = 1400;

    // The width of the display in twips; the program sets it from the real
    // display before the form loads.
    Long screenWidthTwips = 1024 * 15;

    Frame Frame1{*this, "Frame1"};
    PictureBox Image2{*this, "Image2", &Frame1};
    Label lblAviso{*this, "lblAviso", &Frame1};
    CommandButton cmdAceptar{*this, "cmdAceptar"};
    CommandButton cmdCancelar{*this, "cmdCancelar"};

    // The text of lblAviso for a contact.
    static std::string textoAviso(const ContactoServicio& contacto);

  private:
    CommonModule& c_;
    Long top_ = 0;
    Long left_ = 0;
};

}  // namespace fc
