#include "embedded/automation/model/Value.h"

#include <bit>
#include <cmath>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <type_traits>

#include "embedded/automation/model/Refusal.h"
#include "holders/VariantHolder.h"
#include "holders/WholeVariant.h"

namespace velt::automation {
namespace {

[[noreturn]] void refuseForMemory() {
  throw Refusal(E_OUTOFMEMORY, L"Memory is exhausted.");
}

BSTR stringOf(const std::wstring& text) {
  const BSTR string = SysAllocStringLen(text.c_str(), static_cast<UINT>(text.size()));
  if (string == nullptr) refuseForMemory();
  return string;
}

SAFEARRAY* arrayOf(const double* numbers, std::size_t count) {
  SAFEARRAY* const array = SafeArrayCreateVector(VT_R8, 0, static_cast<ULONG>(count));
  if (array == nullptr) refuseForMemory();
  auto* elements = static_cast<double*>(array->pvData);
  for (std::size_t i = 0; i < count; ++i)
    elements[i] = numbers[i];
  return array;
}

// What a VARIANT holds beside its tag.
template <class T>
std::uint64_t bitsOf(T* pointer) {
  return reinterpret_cast<std::uintptr_t>(pointer);
}

VARTYPE tagOf(const Value& value) {
  static constexpr VARTYPE tags[] = {VT_R8,      VT_I4, VT_BOOL, VT_BSTR, VT_ARRAY | VT_R8, VT_ARRAY | VT_R8,
                                     VT_DISPATCH};
  static_assert(std::size(tags) == std::variant_size_v<Value>);
  return tags[value.index()];
}

std::uint64_t bitsOf(Value& value) {
  if (const auto* real = std::get_if<double>(&value)) return std::bit_cast<std::uint64_t>(*real);
  if (const auto* integer = std::get_if<std::int32_t>(&value)) return static_cast<std::uint32_t>(*integer);
  if (const auto* flag = std::get_if<bool>(&value))
    return static_cast<std::uint16_t>(*flag ? VARIANT_TRUE : VARIANT_FALSE);
  if (const auto* text = std::get_if<std::wstring>(&value)) return bitsOf(stringOf(*text));
  if (auto* object = std::get_if<OwnedDispatch>(&value)) return bitsOf(object->detach());
  if (const auto* point = std::get_if<Vector3>(&value)) {
    const double coordinates[] = {point->x, point->y, point->z};
    return bitsOf(arrayOf(coordinates, 3));
  }
  const auto& numbers = std::get<std::vector<double>>(value);
  return bitsOf(arrayOf(numbers.data(), numbers.size()));
}

// False when the source cannot be converted.
bool convert(const VARIANT& source, VARTYPE type, holders::VariantHolder& converted) {
  return holders::handedOver(VariantChangeType(converted.put(), &source, 0, type), converted);
}

std::optional<double> realFrom(const VARIANT& source) {
  holders::VariantHolder converted;
  if (!convert(source, VT_R8, converted) || !std::isfinite(converted.get().dblVal)) return std::nullopt;
  return converted.get().dblVal;
}

std::optional<std::int32_t> integerFrom(const VARIANT& source) {
  const std::optional<double> real = realFrom(source);
  if (!real || std::trunc(*real) < *real || std::trunc(*real) > *real) return std::nullopt;
  if (*real < std::numeric_limits<std::int32_t>::min() || *real > std::numeric_limits<std::int32_t>::max()) {
    return std::nullopt;
  }
  return static_cast<std::int32_t>(*real);
}

std::optional<std::wstring> textFrom(const VARIANT& source) {
  holders::VariantHolder converted;
  if (!convert(source, VT_BSTR, converted)) return std::nullopt;
  BSTR text = converted.get().bstrVal;
  return text == nullptr ? std::wstring() : std::wstring(text, SysStringLen(text));
}

std::optional<std::vector<double>> numbersFrom(const VARIANT& source) {
  if (source.vt != (VT_ARRAY | VT_R8) || source.parray == nullptr || source.parray->cDims != 1)
    return std::nullopt;
  const auto* elements = static_cast<const double*>(source.parray->pvData);
  std::vector<double> numbers(elements, elements + source.parray->rgsabound[0].cElements);
  for (const double number : numbers) {
    if (!std::isfinite(number)) return std::nullopt;
  }
  return numbers;
}

template <class T>
std::optional<Value> valueOf(std::optional<T> converted) {
  if (!converted) return std::nullopt;
  return std::optional<Value>(std::in_place, std::in_place_type<T>, *std::move(converted));
}

}  // namespace

VARIANT toVariant(Value value, const ValueType& type) {
  const VARTYPE tag = tagOf(value);
  // A table whose getter does not give what its row declares is a mistake of ours, and a test reads every row.
  if (type.base() != VT_VARIANT && tag != type.base())
    throw std::logic_error("a getter gives another type than its row declares");
  return holders::wholeVariant(tag, bitsOf(value));
}

std::optional<Value> fromVariant(const VARIANT& variant, const ValueType& type) {
  if (variant.vt == (VT_BYREF | VT_VARIANT)) {
    if (variant.pvarVal == nullptr || variant.pvarVal->vt == (VT_BYREF | VT_VARIANT)) return std::nullopt;
    return fromVariant(*variant.pvarVal, type);
  }
  if (variant.vt == VT_EMPTY || variant.vt == VT_NULL) return std::nullopt;
  const bool isArray = (variant.vt & VT_ARRAY) != 0;
  const bool isObject = variant.vt == VT_DISPATCH || variant.vt == VT_UNKNOWN;
  if (type.base() == VT_DISPATCH) {
    // Objects that have a number (a color and its index) or a name take these too.
    if (variant.vt != VT_DISPATCH) {
      if (isArray || isObject) return std::nullopt;
      const std::optional<std::int32_t> number = integerFrom(variant);
      if (!number && variant.vt == VT_BSTR) return valueOf(textFrom(variant));
      return valueOf(number);
    }
    if (variant.pdispVal == nullptr) return std::nullopt;
    return Value(OwnedDispatch::sharing(variant.pdispVal));
  }
  if (type.base() == VT_VARIANT) {
    std::optional<std::vector<double>> numbers = numbersFrom(variant);
    if (numbers && numbers->size() == 3) return Value(Vector3{(*numbers)[0], (*numbers)[1], (*numbers)[2]});
    return valueOf(std::move(numbers));
  }
  if (isArray || isObject) return std::nullopt;
  switch (type.base()) {
    case VT_R8:
      return valueOf(realFrom(variant));
    case VT_I4:
      return valueOf(integerFrom(variant));
    case VT_BSTR:
      return valueOf(textFrom(variant));
    case VT_BOOL: {
      if (variant.vt == VT_BOOL) return Value(variant.boolVal != VARIANT_FALSE);
      const std::optional<std::int32_t> number = integerFrom(variant);
      if (!number || *number < -1 || *number > 1) return std::nullopt;
      return Value(*number != 0);
    }
    default:
      return std::nullopt;
  }
}

}  // namespace velt::automation
