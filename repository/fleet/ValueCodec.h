#pragma once

#include "host/FrameworkCore/Values/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace Repository {

// The form of values in a store, json on one line that the store's own client shows readably:
// {"t":"i64","v":"-5","w":"<writer>"}. The type is one of g (a group that holds nothing), z (null), b, i64
// and u64 (their digits as a text, since many readers of json lose some), f64, s, sl (a list of texts), y
// (bytes in base64), d, t, dt (ISO 8601). Narrower numbers of other writers, i32, u32 and f32, are read. Any
// thread.
class ValueCodec
{
public:
    // Who wrote it is a text without quotes and backslashes.
    static std::string encode(const FrameworkCore::Values::Value& value, std::string_view writer);

    struct Decoded
    {
        FrameworkCore::Values::Value value;
        std::string writer; // empty where it is not said
    };

    // Nothing for a text of another form, which must be left alone.
    static std::optional<Decoded> decode(std::string_view text);
};

} // namespace Repository
