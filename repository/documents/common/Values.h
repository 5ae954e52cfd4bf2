#pragma once

#include "host/FrameworkCore/Values/Reason.h"
#include "host/FrameworkCore/Values/Text.h"
#include "host/FrameworkCore/Values/Utf8.h"
#include "host/FrameworkCore/Values/ValueText.h"

// What documents use of values and their texts, by its short name.
namespace Repository::Documents {

using FrameworkCore::Values::appendHex;
using FrameworkCore::Values::appendUtf8;
using FrameworkCore::Values::describeType;
using FrameworkCore::Values::isFinerThanAttributes;
using FrameworkCore::Values::isSame;
using FrameworkCore::Values::isUtf8;
using FrameworkCore::Values::lowered;
using FrameworkCore::Values::plainValue;
using FrameworkCore::Values::quoted;
using FrameworkCore::Values::readFileText;
using FrameworkCore::Values::readText;
using FrameworkCore::Values::Reason;
using FrameworkCore::Values::rowOf;
using FrameworkCore::Values::startsWith;
using FrameworkCore::Values::toText;
using FrameworkCore::Values::Type;
using FrameworkCore::Values::typeNamed;
using FrameworkCore::Values::utf8ByteOrderMark;
using FrameworkCore::Values::utf8CodePoint;
using FrameworkCore::Values::utf8Length;
using FrameworkCore::Values::Value;

} // namespace Repository::Documents
