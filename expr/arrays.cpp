// Arrays and their limits: per-type element counts, the 1 MiB data area, 65,535 string elements.
#include "expr/arrays.h"

#include "expr/cell_bytes.h"
#include "expr/variables.h"

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
    size_t bytes = static_cast<size_t>(count) * cellSize(type);
    if (m_data.size() + bytes > kArrayDataBytes)
        return ArrayStatus::OutOfMemory;
    if (type == ValueType::String && m_stringElements + count > kMaxStringElements)
        return ArrayStatus::OutOfMemory;
    Array array {type, bounds, {}, 0, static_cast<uint32_t>(bytes)};
    if (type == ValueType::String)
        array.strings.resize(static_cast<size_t>(count));
    place(array);
    m_index.emplace(std::string(name), std::move(array));
    return ArrayStatus::Ok;
}

void ArrayStore::place(Array& array)
{
    array.start = static_cast<uint32_t>(m_data.size());
    m_data.resize(m_data.size() + array.bytes, 0);
    if (array.type != ValueType::String)
        return;
    m_stringElements += static_cast<int>(array.strings.size());
    for (size_t k = 0; k < array.strings.size(); ++k)
        writeLittleEndian(m_data.data() + array.start + 2 * k, ++m_stringCounter, 2);
}

ArrayStatus ArrayStore::locate(std::string_view name, ValueType type, const std::vector<int32_t>& subscripts,
    Element& element, ArrayBinding* binding)
{
    for (int32_t s : subscripts) {
        if (s < 0 || s > 32767)
            return ArrayStatus::SubscriptOutOfRange;
    }
    Array* array = nullptr;
    if (binding != nullptr && binding->generation == m_generation && binding->array != nullptr) {
        array = static_cast<Array*>(binding->array);
    } else {
        auto found = m_index.find(name);
        if (found == m_index.end()) {
            std::vector<int32_t> bounds(subscripts.size(), kImplicitBound);
            auto status = create(name, type, bounds);
            if (status != ArrayStatus::Ok)
                return status;
            found = m_index.find(name);
        }
        array = &found->second;
        if (binding != nullptr) {
            binding->array = array;
            binding->generation = m_generation;
        }
    }
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
    element = {array, index};
    return ArrayStatus::Ok;
}

double ArrayStore::storedAt(const Array& array, size_t cell) const
{
    return readCell(m_data.data() + array.start + cell * cellSize(array.type), array.type);
}

ArrayStatus ArrayStore::read(std::string_view name, ValueType type, const std::vector<int32_t>& subscripts, Value& value)
{
    Element element;
    auto status = locate(name, type, subscripts, element);
    return status == ArrayStatus::Ok ? readElement(element, value) : status;
}

ArrayStatus ArrayStore::read(ArrayBinding& binding, ValueType type, const std::vector<int32_t>& subscripts, Value& value)
{
    Element element;
    auto status = locate(binding.name, type, subscripts, element, &binding);
    return status == ArrayStatus::Ok ? readElement(element, value) : status;
}

ArrayStatus ArrayStore::readNumber(ArrayBinding& binding, ValueType type, const std::vector<int32_t>& subscripts,
    double& number)
{
    Element element;
    auto status = locate(binding.name, type, subscripts, element, &binding);
    if (status != ArrayStatus::Ok)
        return status;
    const Array& array = *element.array;
    if (array.type == ValueType::String)
        return ArrayStatus::TypeMismatch;
    number = cellNumber(array.type, storedAt(array, element.cell));
    return ArrayStatus::Ok;
}

ArrayStatus ArrayStore::readElement(const Element& element, Value& value) const
{
    const Array& array = *element.array;
    if (array.type == ValueType::String)
        value.setString(array.strings[element.cell]);
    else
        setCellValue(value, array.type, storedAt(array, element.cell));
    return ArrayStatus::Ok;
}

ArrayStatus ArrayStore::readStored(std::string_view name, ValueType type, const std::vector<int32_t>& subscripts,
    double& stored)
{
    Element element;
    auto status = locate(name, type, subscripts, element);
    if (status != ArrayStatus::Ok)
        return status;
    if (element.array->type == ValueType::String)
        return ArrayStatus::TypeMismatch;
    stored = storedAt(*element.array, element.cell);
    return ArrayStatus::Ok;
}

ArrayStatus ArrayStore::store(std::string_view name, ValueType type, const std::vector<int32_t>& subscripts,
    const Value& value)
{
    Element element;
    auto status = locate(name, type, subscripts, element);
    return status == ArrayStatus::Ok ? storeElement(element, value) : status;
}

ArrayStatus ArrayStore::store(ArrayBinding& binding, ValueType type, const std::vector<int32_t>& subscripts,
    const Value& value)
{
    Element element;
    auto status = locate(binding.name, type, subscripts, element, &binding);
    return status == ArrayStatus::Ok ? storeElement(element, value) : status;
}

ArrayStatus ArrayStore::storeNumber(ArrayBinding& binding, ValueType type, const std::vector<int32_t>& subscripts,
    double number)
{
    Element element;
    auto status = locate(binding.name, type, subscripts, element, &binding);
    if (status != ArrayStatus::Ok)
        return status;
    if (element.array->type == ValueType::String)
        return ArrayStatus::TypeMismatch;
    return storeCellNumber(element, number, false);
}

ArrayStatus ArrayStore::storeCellNumber(const Element& element, double number, bool unsignedLiteral)
{
    Array& array = *element.array;
    double stored = 0;
    switch (convertNumberForStore(number, unsignedLiteral, array.type, stored)) {
    case StoreStatus::Ok:
        writeCell(m_data.data() + array.start + element.cell * cellSize(array.type), array.type, stored);
        return ArrayStatus::Ok;
    case StoreStatus::Overflow:
        return ArrayStatus::Overflow;
    default:
        return ArrayStatus::TypeMismatch;
    }
}

ArrayStatus ArrayStore::storeElement(const Element& element, const Value& value)
{
    Array& array = *element.array;
    if (array.type == ValueType::String) {
        if (!value.isString())
            return ArrayStatus::TypeMismatch;
        array.strings[element.cell] = value.text;
        return ArrayStatus::Ok;
    }
    if (value.isString())
        return ArrayStatus::TypeMismatch;
    return storeCellNumber(element, value.number, value.unsignedLiteral);
}

bool ArrayStore::erase(std::string_view name)
{
    auto found = m_index.find(name);
    if (found == m_index.end())
        return false;
    const Array& gone = found->second;
    auto from = m_data.begin() + gone.start;
    m_data.erase(from, from + gone.bytes);
    for (auto& [other, array] : m_index) {
        if (array.start > gone.start)
            array.start -= gone.bytes;
    }
    if (gone.type == ValueType::String) {
        m_stringElements -= static_cast<int>(gone.strings.size());
        m_stringCounter = static_cast<uint16_t>(m_stringCounter - gone.strings.size());
    }
    m_index.erase(found);
    ++m_generation;
    return true;
}

ArrayStatus ArrayStore::cellsFrom(std::string_view name, ValueType type, const std::vector<int32_t>& subscripts,
    CellRange& range)
{
    Element element;
    if (subscripts.empty()) {
        auto found = m_index.find(name);
        if (found == m_index.end()) {
            auto status = create(name, type, {kImplicitBound});
            if (status != ArrayStatus::Ok)
                return status;
            found = m_index.find(name);
        }
        element.array = &found->second;
    } else {
        auto status = locate(name, type, subscripts, element);
        if (status != ArrayStatus::Ok)
            return status;
    }
    const Array& array = *element.array;
    uint32_t skipped = static_cast<uint32_t>(element.cell) * cellSize(array.type);
    range = {array.type, array.start + skipped, array.bytes - skipped};
    return ArrayStatus::Ok;
}

bool ArrayStore::onlyNumbers(size_t offset, size_t length) const
{
    if (offset > m_data.size() || length > m_data.size() - offset)
        return false;
    for (const auto& [name, array] : m_index) {
        bool overlaps = array.start < offset + length && offset < static_cast<size_t>(array.start) + array.bytes;
        if (overlaps && array.type == ValueType::String)
            return false;
    }
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
    ++m_generation;
    m_index.clear();
    m_data.clear();
    m_stringElements = 0;
    m_stringCounter = 0;
    m_optionBase = 0;
    m_optionBaseSet = false;
}

void ArrayStore::resetKeeping(const std::vector<std::string>& names)
{
    struct Kept {
        std::string name;
        Array array;
        std::vector<uint8_t> cells;
    };
    std::vector<Kept> kept;
    for (const auto& name : names) {
        auto found = m_index.find(name);
        if (found == m_index.end())
            continue;
        auto from = m_data.begin() + found->second.start;
        std::vector<uint8_t> cells(from, from + found->second.bytes);
        kept.push_back({found->first, std::move(found->second), std::move(cells)});
    }
    reset();
    for (auto& [name, array, cells] : kept) {
        place(array);
        if (array.type != ValueType::String)
            std::copy(cells.begin(), cells.end(), m_data.begin() + array.start);
        m_index.emplace(name, std::move(array));
    }
}

} // namespace tessaly::expr
