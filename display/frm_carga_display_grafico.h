// The screen that loads a graphic display through the communications driver.
// The main screen opens it modally from the way step of a Serie_W scale. It
// holds its caption and nothing else yet: the display's own load lives here
// once its controls are added.
#pragma once

#include "platform/screen.h"
#include "platform/services.h"

namespace fc {

constexpr const char* kDisplayCaption = "Cobalt Graphic Display Loader";

class frmCargaDisplayGrafico : public Screen {
  public:
    explicit frmCargaDisplayGrafico(Services services);

    const Services& services() const { return services_; }

  private:
    Services services_;
};

}  // namespace fc
