#include "control/catalogue.h"

#include "platform/runtime_error.h"

namespace fc {

namespace {

// Of these start folders the Serie_H ones end in a back slash, and only the
// level 2 folder of the TR-6100 goes on into "firmcast": the site's shares
// are laid out that way.
const CatalogueEntry kCatalogue[kCatalogueSize] = {
    {0, "Serie_W scale", ModelGroup::Scales, "Picture4", "scale-serie-w", ModelFlag::SerieW, true,
     "t:\\Programas\\Balanzas\\Serie_W", "S:\\Programas\\Balanzas\\Serie_W"},
    {1, "Serie_N scale", ModelGroup::Scales, "Picture3", "scale-serie-n", ModelFlag::SerieN, false,
     "t:\\Programas\\Balanzas\\Serie_N", "S:\\Programas\\Balanzas\\Serie_N"},
    {2, "Serie_H scale (H-7XX)", ModelGroup::Scales, "Picture2", "scale-serie-h", ModelFlag::SerieH,
     false, "t:\\Programas\\Balanzas\\Serie_H\\Firmcast\\",
     "S:\\Programas\\Balanzas\\Serie_H\\Firmcast\\"},
    {3, "Serie_G scale (G410, G420)", ModelGroup::Scales, "Picture6", "scale-serie-g",
     ModelFlag::None, false, "t:\\Programas\\Balanzas\\Serie_G",
     "S:\\Programas\\Balanzas\\Serie_G"},
    {4, "Matrix 4000 labelling system", ModelGroup::Labellers, "Picture5", "labeller-matrix-4000",
     ModelFlag::Matrix4000, false, "t:\\Programas\\Pesaje_y_Etiquetaje\\QPL\\Matrix4000",
     "S:\\Programas\\Pesaje_y_Etiquetaje\\QPL\\Matrix4000"},
    {5, "TR-6100 labeller", ModelGroup::Labellers, "Picture8", "labeller-tr-6100",
     ModelFlag::Tr6100, false, "t:\\Programas\\Pesaje_y_Etiquetaje\\TR6100",
     "S:\\Programas\\Pesaje_y_Etiquetaje\\TR6100\\firmcast"},
    {6, "TR-8200 labeller", ModelGroup::Labellers, "Picture7", "labeller-tr-8200",
     ModelFlag::Tr8200, true, "t:\\Programas\\Pesaje_y_Etiquetaje\\Tr8200",
     "S:\\Programas\\Pesaje_y_Etiquetaje\\Tr8200"},
    {7, "MV-510 visor", ModelGroup::Visors, "Picture12", "visor-mv-510", ModelFlag::None, false,
     "t:\\Programas\\Industrial\\Visores\\MV-510", "S:\\Programas\\Industrial\\Visores\\MV-510"},
    {8, "TR-8200 labeller", ModelGroup::Labellers, "Picture9", "labeller-tr-8200-b",
     ModelFlag::Tr8200, true, "t:\\Programas\\Pesaje_y_Etiquetaje\\Tr8200",
     "S:\\Programas\\Pesaje_y_Etiquetaje\\Tr8200"},
};

}  // namespace

const CatalogueEntry& catalogueEntry(int code) {
    if (code < 0 || code >= kCatalogueSize)
        throw RuntimeError(err::kSubscriptOutOfRange);
    return kCatalogue[code];
}

}  // namespace fc
