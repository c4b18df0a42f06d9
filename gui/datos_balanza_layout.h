// The window of the scale record form, `frmDatosBalanza`: the address and the
// serial number large and one above the other, the level and the time under
// them, and Accept at the bottom right. The serial field has the focus, so
// that a barcode reader's read goes straight into it.
#pragma once

namespace fc {

// Registers the layout for the screens named "frmDatosBalanza".
void registerDatosBalanzaLayout();

}  // namespace fc
