// The look of the main screen's window: a dark blue column of steps, a light
// page, white cards for the models. Only the window's own parts and frames
// are styled; the controls keep the platform's style.
#include "gui/firmcast_look.h"

namespace fc {

QString firmcastStyleSheet() {
    return QStringLiteral(R"(
#FirmcastWindow { background: #f3f5f8; }
#stepColumn {
    background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #1f4f82, stop:1 #143457);
}
#productName { color: white; font-size: 19px; font-weight: bold; }
#productVersion { color: #9db8d6; font-size: 11px; }
#lblNivel {
    color: white; font-size: 12px; padding: 4px 8px; border: 1px solid #7aa7d6;
    border-radius: 3px;
}
#stepScroll, #stepPage { background: transparent; }
#lblPuertos, #lblComprobacion { color: #506070; }
QLabel[state] {
    font-size: 14px; padding: 6px 8px; border-left: 4px solid transparent; border-radius: 3px;
}
QLabel[state="todo"] { color: #9db8d6; }
QLabel[state="done"] { color: #d5e4f3; }
QLabel[state="current"] {
    color: white; font-weight: bold; background: rgba(255, 255, 255, 40);
    border-left: 4px solid #7cc4ff;
}
#stepTitle { color: #1f2d3d; font-size: 21px; font-weight: bold; }
#stepHint { color: #506070; font-size: 13px; }
#separator { color: #d3dae2; }
QGroupBox {
    background: white; border: 1px solid #d3dae2; border-radius: 6px;
    margin-top: 10px; font-weight: bold; color: #1f2d3d;
}
QGroupBox::title { subcontrol-origin: margin; left: 12px; padding: 0 4px; }
QGroupBox QGroupBox { background: #f8fafc; }
#Seleccion { background: transparent; border: none; margin-top: 14px; }
#Seleccion > QGroupBox { background: white; }
QGroupBox QRadioButton, QGroupBox QCheckBox, QGroupBox QLabel { font-weight: normal; }
#Label6 { font-weight: bold; }
#fieldCaption { color: #506070; }
#modelCard { background: white; border: 1px solid #d3dae2; border-radius: 6px; }
#modelCard:hover { border: 1px solid #7aa7d6; }
#modelCard[focused="true"] { border: 2px solid #1f6fb2; }
#modelName { color: #1f2d3d; font-weight: bold; }
#chosenModel { background: white; border: 1px solid #d3dae2; border-radius: 6px; }
#Dir1::item, #File1::item { padding: 2px 4px; }
#Texto { font-family: "DejaVu Sans Mono", monospace; color: #1f2d3d; }
#Banco_actual { font-weight: bold; color: #1f4f82; }
)");
}

}  // namespace fc
