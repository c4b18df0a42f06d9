// The devices the loader knows: nine selectable models in three groups, held
// as one table. A row says which picture stands for the model, which flag its
// selection raises, how it is reached and where its firmware lives.
#pragma once

#include <string>

namespace fc {

enum class ModelFlag { None, SerieW, SerieN, SerieH, Matrix4000, Tr6100, Tr8200 };
enum class ModelGroup { Scales, Labellers, Visors };

struct CatalogueEntry {
    int code;            // the value of `modelo_elegido`
    const char* device;  // what the operator would call it
    ModelGroup group;
    const char* picture;       // the picture box of the model on step 0
    const char* image;         // the image resource it shows
    ModelFlag flag;            // None: the model hands over to a tool or screen
    bool ethernet;             // may be loaded over Ethernet too
    const char* folderLevel1;  // start folder of the file step at level 1 ("T:")
    const char* folderLevel2;  // and at level 2 ("S:")
};

// The nine rows, by code 0..8.
const CatalogueEntry& catalogueEntry(int code);
constexpr int kCatalogueSize = 9;

}  // namespace fc
