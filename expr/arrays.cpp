// Arrays and their limits: per-type element counts, the 1 MiB data area, 65,535 string elements.
#include "expr/arrays.h"

namespace tessaly::expr {

namespace {

int64_t elementLimit(ValueType type)
{
    switch (type) {
    case ValueType::Integer: return 32767;
    case ValueType::Single: return 16383;
    case ValueType::Double: return 8191;
    default: return 65535;
    }
}

size_t cellBytes(ValueType type)
{
    switch (type) {
    case ValueType::Single: return 4;
    case ValueType::Double: return 8;
    default: return 2;
    }
}

} // namespace

ArrayStatus ArrayStore::create(std::string_view name, ValueType type, const std::vector<int32_t>& bounds)
{
    if (exists(name))
        return ArrayStatus::Duplicate;
    if (bounds.empty() || static_cast<int>(bounds.size()) > kMaxDimensions ||
        static_cast<int>(m_index.size()) >= kMaxArrays)
        return ArrayStatus::OutOfMemory;
    int64_t count = 1;
    for (int32_t bound : bounds) {
        // A negative bound leaves no element at all.
        if (bound < 0)
            return ArrayStatus::SubscriptOutOfRange;
        count *= static_cast<int64_t>(bound) + 1;
        if (count > elementLimit(type))
            return ArrayStatus::OutOfMemory;
    }
    size_t bytes = static_cast<size_t>(count) * cellBytes(type);
    if (m_usedBytes + bytes > kArrayDataBytes)
        return ArrayStatus::OutOfMemory;
    if (type == ValueType::String && m_stringElements + count > kMaxStringElements)
        return ArrayStatus::OutOfMemory;
    Array array {type, bounds, {}, {}, bytes};
    if (type == ValueType::String) {
        array.strings.resize(static_cast<size_t>(count));
        m_stringElements += static_cast<int>(count);
    } else {
        array.numbers.assign(static_cast<size_t>(count), 0.0);
    }
    m_usedBytes += bytes;
    m_index.emplace(std::string(name), std::move(array));
    return ArrayStatus::Ok;
}

ArrayStatus ArrayStore::locate(std::string_view name, ValueType type, const std::vector<int32_t>& subscripts,
    Array*& array, size_t& cell)
{
    for (int32_t s : subscripts) {
        if (s < 0 || s > 32767)
            return ArrayStatus::SubscriptOutOfRange;
    }
    auto found = m_index.find(name);
    if (found == m_index.end()) {
        std::vector<int32_t> bounds(subscripts.size(), kImplicitBound);
        auto status = create(name, type, bounds);
        if (status != ArrayStatus::Ok)
            return status;
        found = m_index.find(name);
    }
    array = &found->second;
    if (subscripts.size() != array->bounds.size())
        return ArrayStatus::SubscriptOutOfRange;
    // The first subscript varies fastest.
    size_t index = 0;
    for (size_t k = subscripts.size(); k-- > 0;) {
        int32_t s = subscripts[k];
        if (s < m_optionBase || s > array->bounds[k])
            return ArrayStatus::SubscriptOutOfRange;
        index = index * static_cast<size_t>(array->bounds[k] + 1) + static_cast<size_t>(s);
    }
    cell = index;
    return ArrayStatus::Ok;
}

ArrayStatus ArrayStore::read(std::string_view name, ValueType type, const std::vector<int32_t>& subscripts, Value& value)
{
    Array* array = nullptr;
    size_t cell = 0;
    auto status = locate(name, type, subscripts, array, cell);
    if (status != ArrayStatus::Ok)
        return status;
    if (array->type == ValueType::String)
        value = Value::makeString(array->strings[cell]);
    else
        value = cellValue(array->type, array->numbers[cell]);
    return ArrayStatus::Ok;
}

ArrayStatus ArrayStore::readStored(std::string_view name, ValueType type, const std::vector<int32_t>& subscripts,
    double& stored)
{
    Array* array = nullptr;
    size_t cell = 0;
    auto status = locate(name, type, subscripts, array, cell);
    if (status != ArrayStatus::Ok)
        return status;
    if (array->type == ValueType::String)
        return ArrayStatus::TypeMismatch;
    stored = array->numbers[cell];
    return ArrayStatus::Ok;
}

ArrayStatus ArrayStore::store(std::string_view name, ValueType type, const std::vector<int32_t>& subscripts,
    const Value& value)
{
    Array* array = nullptr;
    size_t cell = 0;
    auto status = locate(name, type, subscripts, array, cell);
    if (status != ArrayStatus::Ok)
        return status;
    if (array->type == ValueType::String) {
        if (!value.isString())
            return ArrayStatus::TypeMismatch;
        array->strings[cell] = value.text;
        return ArrayStatus::Ok;
    }
    double stored = 0;
    switch (convertForStore(value, array->type, stored)) {
    case StoreStatus::Ok:
        array->numbers[cell] = stored;
        return ArrayStatus::Ok;
    case StoreStatus::Overflow:
        return ArrayStatus::Overflow;
    default:
        return ArrayStatus::TypeMismatch;
    }
}

bool ArrayStore::erase(std::string_view name)
{
    auto found = m_index.find(name);
    if (found == m_index.end())
        return false;
    m_usedBytes -= found->second.bytes;
    if (found->second.type == ValueType::String)
        m_stringElements -= static_cast<int>(found->second.strings.size());
    m_index.erase(found);
    return true;
}

bool ArrayStore::setOptionBase(int base)
{
    if (m_optionBaseSet)
        return false;
    m_optionBase = base;
    m_optionBaseSet = true;
    return true;
}

void ArrayStore::reset()
{
    m_index.clear();
    m_usedBytes = 0;
    m_stringElements = 0;
    m_optionBase = 0;
    m_optionBaseSet = false;
}

void ArrayStore::resetKeeping(const std::vector<std::string>& names)
{
    std::vector<std::pair<std::string, Array>> kept;
    for (const auto& name : names) {
        auto found = m_index.find(name);
        if (found != m_index.end())
            kept.emplace_back(found->first, std::move(found->second));
    }
    reset();
    for (auto& [name, array] : kept) {
        m_usedBytes += array.bytes;
        if (array.type == ValueType::String)
            m_stringElements += static_cast<int>(array.strings.size());
        m_index.emplace(name, std::move(array));
    }
}

} // namespace tessaly::expr
