// The screen that loads an MV-510 visor. The main screen opens it modally
// when the visor model is chosen. It holds its caption and nothing else yet:
// the visor's own load (file, transport, ISP dialogue) lives here once its
// controls are added.
#pragma once

#include "platform/screen.h"
#include "platform/services.h"

namespace fc {

constexpr const char* kVisorCaption = "MV-510 Firmware Loader";

class frmCargaMV510 : public Screen {
  public:
    explicit frmCargaMV510(Services services);

    const Services& services() const { return services_; }

  private:
    Services services_;
};

}  // namespace fc
