// Any bytes as each of the files that variables and units are read from.

#include <array>

#include "fuzz/input.h"
#include "tyr/var/catalogue.h"
#include "tyr/var/expression.h"
#include "tyr/var/label.h"
#include "tyr/var/sources.h"
#include "tyr/var/units.h"
#include "tyr/var/var_file.h"
#include "tyr/var/var_menu.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    const std::string bytes = fuzz_text(data, size);
    std::string path;
    for (const char *name : {"variable.lup", "source.lup", "mod_name.lup", "units.lup", "a.var"}) {
        path = fuzz_file(bytes, name);
    }
    RES_put("file_path", path.substr(0, path.rfind('/')).c_str());
    VAR_read_varfile();
    VAR_open_file("a.var");
    VAR_read_menu();
    VAR_decode(nullptr, "wbrb,temp:F,hel,two");
    std::array<char, kModelTextSize> out;
    VAR_source(out.data(), 98);
    VAR_model(out.data(), 7096);
    UNIT_forget();
    UNIT_convert("C", "F", 20.0F);
    return 0;
}
