#include "tyr/plot/symbol.h"

#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/gks/gks.h"

namespace {

constexpr unsigned kRoutineFailure = 64;
constexpr const char *kDefaultFile = "wx.smb";
constexpr size_t kMaxPairs = 20;
constexpr int kNameRoom = 15;

struct Symbol {
    std::array<char, kNameRoom> name = {};
    long position = 0; ///< in the file, behind the name
};

struct State {
    std::string name; ///< of the open file
    FilePtr file;
    bool is_loaded = false;
    std::vector<Symbol> symbols;
};

State state;

/// Passes over the rest of a symbol and the line end behind its "$".
void skip_symbol(std::FILE *file)
{
    int c = std::fgetc(file);
    while (c != EOF && c != '$') {
        c = std::fgetc(file);
    }
}

void load()
{
    state.symbols.clear();
    std::rewind(state.file.get());
    Symbol symbol;
    while (state.symbols.size() < kMaxSymbols &&
           std::fscanf(state.file.get(), "%14s%*[^ \t\r\n]", symbol.name.data()) >= 0 &&
           symbol.name[0] != '\0') {
        symbol.position = std::ftell(state.file.get());
        state.symbols.push_back(symbol);
        symbol.name[0] = '\0';
        skip_symbol(state.file.get());
    }
    state.is_loaded = true;
}

const Symbol *find_symbol(const char *code)
{
    for (const Symbol &s : state.symbols) {
        const std::string name(s.name.data());
        if (STR_ncasecmp(name.c_str(), code, static_cast<int>(name.size())) == 0) {
            return &s;
        }
    }
    return nullptr;
}

/// Lower left corner of a symbol at a place, by the kernel's text alignment.
void align(float *x, float *y, float size)
{
    int error = 0;
    std::array<int, 2> rec = {};
    ginq_text_align(&error, rec.data());
    if (rec[0] == kAlignRight) {
        *x -= size;
    } else if (rec[0] == kAlignCentre) {
        *x -= size / 2.0F;
    }
    if (rec[1] == kAlignTop || rec[1] == kAlignCap) {
        *y -= size;
    } else if (rec[1] == kAlignHalf) {
        *y -= size / 2.0F;
    }
}

} // namespace

int WX_symb_file(const char *name)
{
    const std::string wanted = name ? name : kDefaultFile;
    if (state.file && STR_casecmp(state.name.c_str(), wanted.c_str()) == 0) {
        return -1;
    }
    std::array<char, kFileNameRoom> path;
    FILE_join(RES_get("file_path"), wanted.c_str(), path.data());
    state.file.reset();
    state.is_loaded = false;
    // positions in the file are needed, so a pipe or the standard input won't do
    if (FILE_is_regular(path.data()) == 1) {
        state.file.reset(FILE_open(path.data(), "r"));
    }
    if (!state.file) {
        MSG_out(kRoutineFailure, "WX_symb_file: Unable to open file: %s\n", path.data());
        return -1;
    }
    state.name = wanted;
    return 0;
}

int WX_symbol(float x, float y, float size, const char *code)
{
    if (!state.file) {
        WX_symb_file(nullptr);
    }
    if (!state.file || code[0] == '\0' || code[0] == ' ') {
        return 0;
    }
    if (!state.is_loaded) {
        load();
    }
    const Symbol *symbol = find_symbol(code);
    if (!symbol || std::fseek(state.file.get(), symbol->position, SEEK_SET) != 0) {
        return 0;
    }
    align(&x, &y, size);
    for (;;) {
        std::vector<float> points;
        float px = 0.0F;
        float py = 0.0F;
        while (points.size() < 2 * kMaxPairs &&
               std::fscanf(state.file.get(), "%f,%f", &px, &py) == 2) {
            points.push_back(px * size + x);
            points.push_back(py * size + y);
        }
        std::array<char, kNameRoom> word = {};
        if (points.empty() || std::fscanf(state.file.get(), "%14s", word.data()) != 1) {
            return 1;
        }
        const int n = static_cast<int>(points.size() / 2);
        if (word[0] == 'F') {
            gfill_area(n, points.data());
        } else if (n > 1) {
            gpolyline(n, points.data());
        }
    }
}
