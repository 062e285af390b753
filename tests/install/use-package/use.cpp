#include <tqpumpd2k.h>

#include <memory>
#include <string>

int main() {
  const float matrix[] = {1, 0, 0, 1, 0, 0};
  const std::unique_ptr<void, decltype(&PSClose)> converter(PSOpen(matrix), PSClose);
  const std::string page = "0 0 moveto 10 20 lineto stroke\n";
  auto length = static_cast<int32_t>(page.size());
  const char* text = PSConvertToPdf(converter.get(), page.data(), &length);
  return text != nullptr && std::string(text, static_cast<size_t>(length)) == "0 0 m\n10 20 l\nS "
             ? 0
             : 1;
}
