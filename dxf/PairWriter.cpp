#include "dxf/PairWriter.h"

#include "dxf/Numbers.h"

namespace velt::dxf {

void PairWriter::text(int code, std::string_view utf8) {
  verbatim(code, encoding_.encode(Encoding::utf8().decode(utf8)));
}

void PairWriter::integer(int code, std::int64_t value) {
  verbatim(code, formatInteger(value));
}

void PairWriter::real(int code, double value) {
  verbatim(code, formatReal(value));
}

void PairWriter::handle(int code, std::uint64_t value) {
  verbatim(code, formatHandle(value));
}

void PairWriter::point(int code, const Point& at) {
  flatPoint(code, at);
  real(code + 20, at.z);
}

void PairWriter::flatPoint(int code, const Point& at) {
  real(code, at.x);
  real(code + 10, at.y);
}

void PairWriter::verbatim(int code, std::string_view value) {
  constexpr std::size_t codeWidth = 3;
  const std::string digits = std::to_string(code);
  if (digits.size() < codeWidth) bytes_.append(codeWidth - digits.size(), ' ');
  bytes_.append(digits).append("\n").append(value).append("\n");
}

}  // namespace velt::dxf
