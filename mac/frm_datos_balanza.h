// The scale record form, `frmDatosBalanza`: after a load at the production
// level, or when a scale has just been given a MAC address, it holds the line
// for one scale. It shows the address, tells the operator what to check,
// takes the serial number (from a barcode reader that ends with Enter, or the
// keyboard), writes it into the register row of the address, and over
// Ethernet proves by an echo that the scale now answers with the address it
// was given. Only its Accept button closes it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/controls.h"
#include "platform/screen.h"
#include "platform/vb_types.h"

namespace fc {

struct MacModule;
struct NetworkModule;

// What the form uses of the main screen and its program.
struct DatosBalanzaPanel {
    MacModule& mac;
    NetworkModule& red;
    const std::string& mac_actual;
    const Flag& pide_mac;
    const Integer& nivel;
    const Integer& tipo_conexion;
    const std::vector<std::string>& lista_balanzas;
    const Integer& balanza_actual;
};

class frmDatosBalanza : public Screen {
  public:
    explicit frmDatosBalanza(DatosBalanzaPanel panel);

    Frame Frame1{*this, "Frame1"};
    Label Label2{*this, "Label2", &Frame1};
    TextBox txtMAC{*this, "txtMAC", &Frame1};
    Label Label1{*this, "Label1", &Frame1};
    TextBox txtSerialNumber{*this, "txtSerialNumber", &Frame1};
    Label Label4{*this, "Label4", &Frame1};
    Label Label5{*this, "Label5", &Frame1};
    CommandButton cmdAceptar{*this, "cmdAceptar"};

    // Loads the form, runs its load event and, unless that closed it, shows
    // it modally until Accept closes it.
    void Mostrar();

    void Form_Load();
    void cmdAceptar_Click();
    void txtSerialNumber_KeyPress(Integer& KeyAscii);

  private:
    void leeNumeroSerie();
    void muestraNivelYHora();
    void pideComprobacion();
    bool serieValida(const std::string& serie);
    void anotaSerie(const std::string& serie);
    void compruebaBalanza();

    DatosBalanzaPanel p_;
};

// The longest serial number the register takes.
constexpr std::size_t kLargoMaximoSerie = 26;

}  // namespace fc
