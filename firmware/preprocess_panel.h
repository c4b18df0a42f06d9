// What `PreprocesaFile` uses of the main screen: the pump it yields to, its
// dialogs and files, the label `lblModelo` that shows the file's model
// header, the model flags it tests, the variables it writes, the message
// list it builds, and the screen's `acaba2` for the refusals of the first
// line.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "firmware/mensaje_eth.h"
#include "platform/vb_types.h"

namespace fc {

class Pump;
class Dialogs;
class FileTable;
class Drives;
class Label;

struct PreprocessPanel {
    Pump& pump;
    Dialogs& dialogs;
    FileTable& files;
    const Drives& drives;  // where the file's drive letter points
    Label& lblModelo;
    const Flag& es_serie_n;
    const Flag& es_serie_w;
    const Flag& es_tr8200;
    std::string& linea_fichero;
    std::string& inicio_linea;
    std::string& cabecera_modelo;
    std::vector<MensajeEth>& mensajes;
    Long& longitud_datos;
    std::function<void()> acaba2;
};

}  // namespace fc
