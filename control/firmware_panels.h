// What the firmware readers and the preprocessing use of the main screen:
// its controls and run state, handed over as the panels of the firmware
// subsystem. The main screen reads its firmware as file 1.
#pragma once

#include "firmware/preprocess_panel.h"
#include "firmware/reader_panel.h"

namespace fc {

class Firmcast;

ReaderPanel readerPanel(Firmcast& form);
SegmentState segmentState(Firmcast& form);
PreprocessPanel preprocessPanel(Firmcast& form);

}  // namespace fc
