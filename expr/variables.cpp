// Scalar variables and the store rules shared with array elements.
#include "expr/variables.h"

#include <cmath>

#include <algorithm>

#include "core/char_class.h"
#include "core/rounding.h"
#include "expr/cell_bytes.h"
#include "expr/number_text.h"

namespace tessaly::expr {

namespace {

constexpr double kSingleLimit = 1.701410009187828e38;
constexpr double kDoubleLimit = 1.701411834604692e38;

} // namespace

StoreStatus convertForStore(const Value& value, ValueType target, double& stored)
{
    if (value.isString() != (target == ValueType::String))
        return StoreStatus::TypeMismatch;
    return convertNumberForStore(value.number, value.unsignedLiteral, target, stored);
}

StoreStatus convertNumberForStore(double x, bool unsignedLiteral, ValueType target, double& stored)
{
    if (!std::isfinite(x))
        return StoreStatus::Overflow;
    switch (target) {
    case ValueType::Integer: {
        double rounded = core::roundHalfAwayFromZero(x);
        double low = unsignedLiteral ? 0 : -32768;
        double high = unsignedLiteral ? 65535 : 32767;
        if (rounded < low || rounded > high)
            return StoreStatus::Overflow;
        stored = static_cast<int16_t>(static_cast<uint16_t>(static_cast<int32_t>(rounded)));
        return StoreStatus::Ok;
    }
    case ValueType::Single: {
        float narrowed = static_cast<float>(x);
        if (std::fabs(narrowed) > static_cast<float>(kSingleLimit) || !std::isfinite(narrowed))
            return StoreStatus::Overflow;
        stored = narrowed == 0.0f ? 0.0 : narrowed; // -0 is stored as +0
        return StoreStatus::Ok;
    }
    case ValueType::Double:
        if (std::fabs(x) > kDoubleLimit)
            return StoreStatus::Overflow;
        stored = x == 0.0 ? 0.0 : x;
        return StoreStatus::Ok;
    default:
        return StoreStatus::TypeMismatch;
    }
}

void setCellValue(Value& value, ValueType type, double stored)
{
    auto shown = type == ValueType::Integer || type == ValueType::Single ? type : ValueType::Double;
    value.setNumber(cellNumber(type, stored), variableForm(type), shown);
}

VariableStore::VariableStore()
{
    reset();
}

void VariableStore::reset()
{
    ++m_generation;
    m_defTypes.fill(ValueType::Unknown);
    m_entries.clear();
    m_stringPool.clear();
    m_index.clear();
    m_cells.clear();
}

void VariableStore::resetKeeping(const std::vector<std::string>& names)
{
    struct Kept {
        std::string name;
        ValueType type;
        Value value;
    };
    std::vector<Kept> kept;
    for (const auto& name : names) {
        int index = find(name);
        if (index < 0)
            continue;
        Kept entry {name, m_entries[static_cast<size_t>(index)].type, {}};
        if (read(name, entry.type, entry.value))
            kept.push_back(std::move(entry));
    }
    reset();
    for (const auto& entry : kept)
        store(entry.name, entry.type, entry.value);
}

ValueType VariableStore::defaultType(char letter) const
{
    letter = core::toUpperAscii(letter);
    if (letter < 'A' || letter > 'Z')
        return ValueType::Single;
    auto type = m_defTypes[static_cast<size_t>(letter - '@')];
    return type == ValueType::Unknown ? ValueType::Single : type;
}

ValueType VariableStore::typeOfName(std::string_view name) const
{
    for (char c : name) {
        switch (c) {
        case '%': return ValueType::Integer;
        case '!': return ValueType::Single;
        case '#': return ValueType::Double;
        case '$': return ValueType::String;
        case '\n': case '\r': case ' ': case '\'': case ',': case ':': case ';': case '=': case '(':
            return name.empty() ? ValueType::Single : defaultType(name[0]);
        default:
            break;
        }
    }
    return name.empty() ? ValueType::Single : defaultType(name[0]);
}

bool VariableStore::canDefine(char first, char last, ValueType type) const
{
    for (char c = first; c <= last; ++c) {
        auto current = m_defTypes[static_cast<size_t>(c - '@')];
        if (current != ValueType::Unknown && current != type)
            return false;
    }
    return true;
}

void VariableStore::define(char first, char last, ValueType type)
{
    for (char c = first; c <= last; ++c)
        m_defTypes[static_cast<size_t>(c - '@')] = type;
    ++m_generation;
}

int VariableStore::find(std::string_view name) const
{
    auto found = m_index.find(name);
    return found == m_index.end() ? -1 : found->second;
}

int VariableStore::create(std::string_view name, ValueType type)
{
    if (static_cast<int>(m_entries.size()) >= kMaxScalars || m_cells.size() + cellSize(type) > kScalarDataBytes)
        return -1;
    Scalar scalar {std::string(name), type, static_cast<uint32_t>(m_cells.size()), 0};
    m_cells.resize(m_cells.size() + cellSize(type), 0);
    if (type == ValueType::String) {
        m_stringPool.emplace_back();
        scalar.poolNumber = static_cast<uint16_t>(m_stringPool.size());
        writeLittleEndian(m_cells.data() + scalar.offset, scalar.poolNumber, 2);
    }
    int index = static_cast<int>(m_entries.size());
    m_entries.push_back(std::move(scalar));
    m_index.emplace(m_entries.back().name, index);
    return index;
}

int VariableStore::findOrCreate(std::string_view name, ValueType type)
{
    int index = find(name);
    return index >= 0 ? index : create(name, type);
}

bool VariableStore::read(std::string_view name, ValueType type, Value& value)
{
    int index = findOrCreate(name, type);
    if (index < 0)
        return false;
    readAt(index, value);
    return true;
}

void VariableStore::readAt(int index, Value& value) const
{
    const auto& scalar = m_entries[static_cast<size_t>(index)];
    if (scalar.type == ValueType::String)
        value.setString(m_stringPool[scalar.poolNumber - 1u]);
    else
        setCellValue(value, scalar.type, readCell(m_cells.data() + scalar.offset, scalar.type));
}

double VariableStore::readStoredAt(int index) const
{
    const auto& scalar = m_entries[static_cast<size_t>(index)];
    return scalar.type == ValueType::String ? 0.0 : readCell(m_cells.data() + scalar.offset, scalar.type);
}

StoreStatus VariableStore::storeAt(int index, const Value& value)
{
    auto& scalar = m_entries[static_cast<size_t>(index)];
    if (scalar.type == ValueType::String) {
        if (!value.isString())
            return StoreStatus::TypeMismatch;
        m_stringPool[scalar.poolNumber - 1u] = value.text;
        return StoreStatus::Ok;
    }
    double stored = 0;
    auto status = convertForStore(value, scalar.type, stored);
    if (status == StoreStatus::Ok)
        writeCell(m_cells.data() + scalar.offset, scalar.type, stored);
    return status;
}

StoreStatus VariableStore::storeNumberAt(int index, double number)
{
    const auto& scalar = m_entries[static_cast<size_t>(index)];
    if (scalar.type == ValueType::String)
        return StoreStatus::TypeMismatch;
    double stored = 0;
    auto status = convertNumberForStore(number, false, scalar.type, stored);
    if (status == StoreStatus::Ok)
        writeCell(m_cells.data() + scalar.offset, scalar.type, stored);
    return status;
}

bool VariableStore::readStored(std::string_view name, ValueType type, double& stored)
{
    int index = findOrCreate(name, type);
    if (index < 0)
        return false;
    stored = readStoredAt(index);
    return true;
}

StoreStatus VariableStore::store(std::string_view name, ValueType type, const Value& value)
{
    int index = find(name);
    // A variable keeps the type it was created with.
    ValueType target = index >= 0 ? m_entries[static_cast<size_t>(index)].type : type;
    double stored = 0;
    if (target != ValueType::String) {
        auto status = convertForStore(value, target, stored);
        if (status != StoreStatus::Ok)
            return status;
    } else if (!value.isString()) {
        return StoreStatus::TypeMismatch;
    }
    if (index < 0) {
        index = create(name, target);
        if (index < 0)
            return StoreStatus::OutOfMemory;
    }
    auto& scalar = m_entries[static_cast<size_t>(index)];
    if (scalar.type == ValueType::String)
        m_stringPool[scalar.poolNumber - 1u] = value.text;
    else
        writeCell(m_cells.data() + scalar.offset, scalar.type, stored);
    return StoreStatus::Ok;
}

bool VariableStore::onlyNumbers(size_t offset, size_t length) const
{
    if (offset > m_cells.size() || length > m_cells.size() - offset)
        return false;
    // Cells lie in creation order: the first scalar that may overlap is the last one starting at
    // or before offset.
    auto first = std::upper_bound(m_entries.begin(), m_entries.end(), offset,
        [](size_t at, const Scalar& scalar) { return at < scalar.offset; });
    if (first != m_entries.begin())
        --first;
    for (auto it = first; it != m_entries.end() && it->offset < offset + length; ++it) {
        if (it->type == ValueType::String && it->offset + 2 > offset)
            return false;
    }
    return true;
}

} // namespace tessaly::expr
