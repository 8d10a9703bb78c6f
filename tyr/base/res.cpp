#include "tyr/base/res.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string_view>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"

namespace {

constexpr unsigned kListing = 8; ///< mask of the listing that a user asks for

struct State {
    std::vector<ResourceRec> resources; ///< in order of first storage
    std::string program = "Tyr";
} state;

ResourceRec *find(const char *name)
{
    if (!name) {
        return nullptr;
    }
    const auto node = std::find_if(state.resources.begin(), state.resources.end(),
                                   [&](const ResourceRec &r) { return r.name == name; });
    return node == state.resources.end() ? nullptr : &*node;
}

char list_separator(const ResourceRec &resource)
{
    return resource.type == kResList ? '\n' : ',';
}

} // namespace

int RES_set(int index, const char *name, const char *value, int type)
{
    if (!name) {
        return -1;
    }
    try {
        // the value may be the stored text itself
        ResourceRec fresh{index, name, value ? value : "", value != nullptr, type};
        if (ResourceRec *known = find(name)) {
            *known = std::move(fresh);
        } else {
            state.resources.push_back(std::move(fresh));
        }
    } catch (const std::bad_alloc &) {
        return -1;
    }
    return 0;
}

int RES_append(int index, const char *name, const char *value, int type)
{
    ResourceRec *known = find(name);
    if (!known || !known->has_value) {
        return RES_set(known ? known->index : index, name, value, known ? known->type : type);
    }
    if (value) {
        try {
            known->value += '\n' + std::string(value);
        } catch (const std::bad_alloc &) {
            return -1;
        }
    }
    return 0;
}

int RES_put(const char *name, const char *value)
{
    return RES_set(kMissingInt, name, value, kResText);
}

const char *RES_get(const char *name)
{
    const ResourceRec *resource = find(name);
    return resource ? resource->value.c_str() : nullptr;
}

bool RES_has_value(const char *name)
{
    const ResourceRec *resource = find(name);
    return resource && resource->has_value;
}

int RES_get_list(const char *name, int *count, char ***array)
{
    *count = 0;
    *array = nullptr;
    if (const ResourceRec *resource = find(name)) {
        STR_split(resource->value.c_str(), list_separator(*resource), count, array);
    }
    return *count;
}

std::vector<std::string> RES_list(const char *name)
{
    const ResourceRec *resource = find(name);
    return resource ? STR_fields(resource->value, list_separator(*resource))
                    : std::vector<std::string>();
}

void RES_print_all()
{
    for (const ResourceRec &r : state.resources) {
        if (r.has_value) {
            MSG_out(kListing, "%s: %s\n", r.name.c_str(), r.value.c_str());
        } else {
            MSG_out(kListing, "%s:\n", r.name.c_str());
        }
    }
}

std::vector<ResourceRec> RES_all()
{
    return state.resources;
}

char *RES_program_name(char *buffer)
{
    if (!buffer) {
        static char unnamed[] = "TYR"; // where there is no memory for a copy
        if (char *copy = strdup(state.program.c_str())) {
            return copy;
        }
        return unnamed;
    }
    STR_copy(buffer, kProgramNameRoom, state.program);
    return buffer;
}

void RES_set_program(const char *argument)
{
    if (!argument || !*argument) {
        return;
    }
    const char *slash = std::strrchr(argument, '/');
    state.program = std::string(slash ? slash + 1 : argument).substr(0, kProgramNameRoom - 1);
}
