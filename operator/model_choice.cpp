#include "operator/model_choice.h"

#include "control/catalogue.h"
#include "control/firmcast_form.h"
#include "operator/operator_script.h"

namespace fc {

std::string groupButtonOf(int code) {
    switch (catalogueEntry(code).group) {
        case ModelGroup::Scales:
            return "optBalanzas";
        case ModelGroup::Labellers:
            return "optEtiquetadoras";
        case ModelGroup::Visors:
            return "optVisores";
    }
    return "optBalanzas";
}

void operatorPickModel(Firmcast& form, int code) {
    operatorClick(form, groupButtonOf(code));
    operatorClick(form, form.pictureOf(code).name());
}

}  // namespace fc
