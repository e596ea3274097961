// A scalar variable named in compiled code, bound to its place in the variable store: the name is
// looked up once, and again only after the store was emptied (RUN, CLEAR, NEW, CHAIN) or a DEF
// statement changed the types of names.
#pragma once

#include <cstdint>
#include <string>

#include "expr/values.h"
#include "expr/variables.h"

namespace tessaly::expr {

struct ScalarBinding {
    std::string name;        // upper-cased, with its suffix as written
    uint32_t generation = 0; // the store's generation when bound; 0: never bound
    int index = -1;          // the scalar's place; -1: not created yet
    ValueType type = ValueType::Single;

    // Reads the scalar, creating it as reading by name would; false when the table is full.
    bool read(VariableStore& store, Value& value);
    // The scalar's type as the name stands and, when that is a number, its value (a string is
    // not read); false when the table is full.
    bool readNumber(VariableStore& store, double& number, ValueType& typeNow)
    {
        if (generation != store.generation())
            bind(store);
        typeNow = type;
        if (type == ValueType::String)
            return true;
        if (index < 0)
            return readNewNumber(store, number);
        number = store.readNumberAt(index);
        return true;
    }
    // Stores as storing by name would.
    StoreStatus store(VariableStore& store, const Value& value);
    // The same for a computed number.
    StoreStatus storeNumber(VariableStore& store, double number);
    // The type of the name as it stands.
    ValueType typeIn(VariableStore& store);

private:
    // Kept out of line: they run once per binding, and the readers above are in the hot path.
    [[gnu::noinline]] void bind(VariableStore& store);
    [[gnu::noinline]] bool readNewNumber(VariableStore& store, double& number);
    [[gnu::noinline]] StoreStatus storeNewNumber(VariableStore& store, double number);
};

} // namespace tessaly::expr
