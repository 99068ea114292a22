// Durations, texts for XML, the DES cipher and digits: what any thread may use with objects of its own. The AES cipher is not among them:
// each call leaks a copy of its vector (docs/oddities.md).

#include "../activity.hpp"

#include "acrypto.hpp"
#include "adattime_duration.hpp"
#include "ades.hpp"
#include "asgml.hpp"

#include <cstring>

namespace endurance {
namespace {

class Values : public Activity {
public:
  Values() {
    KivSGMLString::XMLStr("the first call must not run beside another", true);
    static constexpr unsigned char kKey[] = {1, 2, 3, 4, 5, 6, 7, 8};
    ades_key(&key_, kKey);
  }

  bool round() override {
    KivCoreTime time(static_cast<char const *>("01:000:00:00:00"), 220.0, 8.0);
    time += 1800.0;
    expect(std::strcmp(time.asChar(), "01:000:00:30:00") == 0, "a duration is wrong");
    expect(KivSGMLString::XMLStr("a < b", true) == "a &lt; b", "a text for XML is wrong");
    encrypt();
    digits();
    return true;
  }

private:
  void encrypt() {
    unsigned char block[32] = "thirty-one letters and a zero..";
    ades_enc(&key_, block, 4);
    ades_dec(&key_, block, 4);
    expect(std::strcmp(reinterpret_cast<char *>(block), "thirty-one letters and a zero..") == 0, "a cipher is wrong");
  }

  static void digits() {
    char * encoded = nullptr;
    char * decoded = nullptr;
    unsigned long length = 0;
    expect(Kiv_NewBase64Encode("bytes", 5, encoded, length) && Kiv_NewBase64Decode(encoded, length, decoded, length) &&
               length == 5,
           "Base64 is wrong");
    delete[] encoded;
    delete[] decoded;
  }

  des_ctx key_ = {};
};

} // namespace

ActivityPtr calculate(Place const &) { return std::make_unique<Values>(); }

} // namespace endurance
