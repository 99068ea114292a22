// A DLL whose services are reached by far calls alone: it exports nothing and registers them while it is loaded.

#include "afarcall.hpp"
#include "plugins/farcall_agreement.hpp"

#include <cstdlib>
#include <cstring>

namespace {

void * lastBlock = nullptr;

KivMemBuf bufferOf(void const * bytes, std::size_t size) {
  KivMemBuf buffer;
  buffer.data = std::malloc(size);
  buffer.size = size;
  std::memcpy(buffer.data, bytes, size);
  return buffer;
}

KivMemBuf echo(KivInputData const & input) {
  KivMemBuf buffer = bufferOf(input.text, std::strlen(input.text));
  lastBlock = buffer.data;
  return buffer;
}

KivMemBuf empty(KivInputData const &) { return {}; }

KivMemBuf throwNumber(KivInputData const & input) { throw input.number; }

KivMemBuf tellLastBlock(KivInputData const &) { return bufferOf(&lastBlock, sizeof lastBlock); }

KivMemBuf callBack(KivInputData const & input) {
  KivMemBuf answer;
  KivFarCallFactory::Instance().call(kOfProgram, input, answer);
  return answer;
}

struct Registration {
  Registration() {
    KivFarCallFactory & factory = KivFarCallFactory::Instance();
    factory.registerReceiver(kEcho, echo);
    factory.registerReceiver(kEmpty, empty);
    factory.registerReceiver(kThrows, throwNumber);
    factory.registerReceiver(kLast, tellLastBlock);
    factory.registerReceiver(kNested, callBack);
  }
} const registration;

} // namespace
