// Reads arbitrary bytes as the SDK's login-error text and turns it into the operator's message,
// as a failed login does.

#include "ConnectErrorText.h"
#include "ErrorTexts.h"
#include "FuzzCheck.h"

#include <cstdint>
#include <string>

using namespace kvms_matrix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size); // the SDK hands a C string
    ConnectErrorMsgInfo info;
    ErrorTexts::parseLoginError(text.c_str(), info);
    const QString message = ConnectErrorText::loginError(QStringLiteral("D"), info);
    FUZZ_CHECK(message.startsWith(QLatin1String("Decoder(D)")));
    // Attempts left are never shown below zero, whatever the decoder counts.
    const int left = message.indexOf(QLatin1String("have been made,"));
    FUZZ_CHECK(left < 0 || message.at(left + 15) != QLatin1Char('-'));
    return 0;
}
