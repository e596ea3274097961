#include "expr/scalar_binding.h"

namespace tessaly::expr {

void ScalarBinding::bind(VariableStore& store)
{
    type = store.typeOfName(name);
    index = store.find(name);
    generation = store.generation();
}

ValueType ScalarBinding::typeIn(VariableStore& store)
{
    if (generation != store.generation())
        bind(store);
    return type;
}

bool ScalarBinding::read(VariableStore& store, Value& value)
{
    if (generation != store.generation())
        bind(store);
    if (index < 0) {
        if (!store.read(name, type, value))
            return false;
        index = store.find(name);
        return true;
    }
    store.readAt(index, value);
    return true;
}

// The scalar is made (as reading it by name makes it) and bound.
bool ScalarBinding::readNewNumber(VariableStore& store, double& number)
{
    Value value;
    if (!read(store, value))
        return false;
    number = value.number;
    return true;
}

StoreStatus ScalarBinding::store(VariableStore& store, const Value& value)
{
    if (generation != store.generation())
        bind(store);
    if (index < 0) {
        auto status = store.store(name, type, value);
        index = store.find(name);
        return status;
    }
    return store.storeAt(index, value);
}

StoreStatus ScalarBinding::storeNumber(VariableStore& store, double number)
{
    if (generation != store.generation())
        bind(store);
    if (index < 0)
        return storeNewNumber(store, number);
    return store.storeNumberAt(index, number);
}

StoreStatus ScalarBinding::storeNewNumber(VariableStore& store, double number)
{
    return this->store(store, Value::makeNumber(number, NumberForm::Computed16));
}

} // namespace tessaly::expr
