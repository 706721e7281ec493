// Strings, statuses, handles, argument lists and units.
#include <maya/MArgList.h>
#include <maya/MDistance.h>
#include <maya/MFnBase.h>
#include <maya/MGlobal.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

#include "Graph.h"
#include "TypeNames.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>

const MObject MObject::kNullObj;

MFn::Type MObject::apiType() const
{
    if (node_) return node_->type->apiType;
    if (attribute_) return attribute_->apiType();
    if (data_) return data_->apiType();
    return MFn::kInvalid;
}

bool MObject::hasFn(MFn::Type type) const
{
    if (node_) return node_->hasFn(type);
    if (attribute_) return type == MFn::kBase || type == MFn::kAttribute || attribute_->apiType() == type;
    if (data_) return type == MFn::kBase || type == MFn::kData || data_->apiType() == type;
    return false;
}

const char* MObject::apiTypeStr() const
{
    return vqmhost::apiTypeName(apiType());
}

const char* MStatus::errorString() const
{
    switch (code_) {
    case kSuccess: return "Success";
    case kFailure: return "Failure";
    case kInsufficientMemory: return "Insufficient memory";
    case kInvalidParameter: return "Invalid parameter";
    case kLicenseFailure: return "License failure";
    case kUnknownParameter: return "Unknown parameter";
    case kNotImplemented: return "Not implemented";
    case kNotFound: return "Not found";
    case kEndOfFile: return "End of file";
    }
    return "Unknown error";
}

void MStatus::perror(const char* prefix) const
{
    MGlobal::displayError(MString(prefix ? prefix : "") + ": " + errorString());
}

void MStatus::perror(const MString& prefix) const
{
    perror(prefix.asChar());
}

MString& MString::operator+=(double value)
{
    char buffer[64];
    snprintf(buffer, sizeof buffer, "%g", value);
    text_ += buffer;
    return *this;
}

int MString::index(char c) const
{
    size_t at = text_.find(c);
    return at == std::string::npos ? -1 : int(at);
}

int MString::rindex(char c) const
{
    size_t at = text_.rfind(c);
    return at == std::string::npos ? -1 : int(at);
}

int MString::indexW(const MString& text) const
{
    size_t at = text_.find(text.text_);
    return at == std::string::npos ? -1 : int(at);
}

MString MString::substring(int start, int end) const
{
    if (start < 0) start = 0;
    if (end >= int(text_.size())) end = int(text_.size()) - 1;
    if (end < start) return MString();
    return MString(text_.substr(size_t(start), size_t(end - start + 1)));
}

MString MString::toLowerCase() const
{
    std::string s = text_;
    for (char& c : s) c = char(tolower((unsigned char)c));
    return MString(s);
}

MString MString::toUpperCase() const
{
    std::string s = text_;
    for (char& c : s) c = char(toupper((unsigned char)c));
    return MString(s);
}

MStatus MString::split(char separator, MStringArray& parts) const
{
    parts.clear();
    size_t start = 0;
    while (start <= text_.size()) {
        size_t end = text_.find(separator, start);
        if (end == std::string::npos) end = text_.size();
        if (end > start) parts.append(MString(text_.substr(start, end - start)));
        start = end + 1;
    }
    return MStatus::kSuccess;
}

bool MString::isInt() const
{
    if (text_.empty()) return false;
    char* end = nullptr;
    strtol(text_.c_str(), &end, 10);
    return *end == '\0';
}

bool MString::isDouble() const
{
    if (text_.empty()) return false;
    char* end = nullptr;
    strtod(text_.c_str(), &end);
    return *end == '\0';
}

int MString::asInt() const { return int(strtol(text_.c_str(), nullptr, 10)); }
double MString::asDouble() const { return strtod(text_.c_str(), nullptr); }

MString& MString::set(double value, int precision)
{
    char buffer[64];
    snprintf(buffer, sizeof buffer, "%.*f", precision, value);
    text_ = buffer;
    return *this;
}

MString& MString::substitute(const MString& from, const MString& to)
{
    if (from.text_.empty()) return *this;
    std::string result;
    size_t start = 0;
    for (size_t at; (at = text_.find(from.text_, start)) != std::string::npos; start = at + from.text_.size())
        result += text_.substr(start, at - start) + to.text_;
    text_ = result + text_.substr(start);
    return *this;
}

MString operator+(const MString& a, const MString& b) { return MString(a.str() + b.str()); }
MString operator+(const MString& a, const char* b) { return MString(a.str() + (b ? b : "")); }
MString operator+(const char* a, const MString& b) { return MString((a ? a : "") + b.str()); }
std::ostream& operator<<(std::ostream& out, const MString& text) { return out << text.str(); }

MObject MFnBase::object(MStatus* status) const
{
    if (status) *status = object_.isNull() ? MStatus::kFailure : MStatus::kSuccess;
    return object_;
}

MStatus MFnBase::setObject(MObject& object)
{
    object_ = object;
    return MStatus::kSuccess;
}

MStatus MFnBase::setObject(const MObject& object)
{
    object_ = object;
    return MStatus::kSuccess;
}

bool MFnBase::hasObj(MFn::Type t) const
{
    return object_.hasFn(t);
}

unsigned int MArgList::length(MStatus* status) const
{
    if (status) *status = MStatus::kSuccess;
    return unsigned(args_.size());
}

unsigned int MArgList::flagIndex(const char* shortFlag, const char* longFlag) const
{
    for (size_t i = 0; i < args_.size(); ++i) {
        const std::string& a = args_[i].str();
        if (a.size() < 2 || a[0] != '-') continue;
        const char* name = a.c_str() + 1;
        if ((shortFlag && strcmp(name, shortFlag) == 0) || (longFlag && strcmp(name, longFlag) == 0))
            return unsigned(i);
    }
    return kInvalidArgIndex;
}

MString MArgList::asString(unsigned index, MStatus* status) const
{
    if (index >= args_.size()) {
        if (status) *status = MStatus::kFailure;
        return MString();
    }
    if (status) *status = MStatus::kSuccess;
    return args_[index];
}

int MArgList::asInt(unsigned index, MStatus* status) const
{
    MStatus s;
    MString text = asString(index, &s);
    if (s && !text.isInt()) s = MStatus::kInvalidParameter;
    if (status) *status = s;
    return s ? text.asInt() : 0;
}

double MArgList::asDouble(unsigned index, MStatus* status) const
{
    MStatus s;
    MString text = asString(index, &s);
    if (s && !text.isDouble()) s = MStatus::kInvalidParameter;
    if (status) *status = s;
    return s ? text.asDouble() : 0.0;
}

bool MArgList::asBool(unsigned index, MStatus* status) const
{
    MStatus s;
    MString text = asString(index, &s);
    bool value = false;
    if (s) {
        const std::string& t = text.str();
        if (t == "true" || t == "on" || t == "yes" || t == "1") value = true;
        else if (t == "false" || t == "off" || t == "no" || t == "0") value = false;
        else s = MStatus::kInvalidParameter;
    }
    if (status) *status = s;
    return value;
}

MArgList& MArgList::addArg(const MString& arg)
{
    args_.push_back(arg);
    return *this;
}

double MDistance::centimetersPer(Unit unit)
{
    switch (unit) {
    case kInches: return 2.54;
    case kFeet: return 30.48;
    case kYards: return 91.44;
    case kMiles: return 160934.4;
    case kMillimeters: return 0.1;
    case kCentimeters: return 1.0;
    case kKilometers: return 100000.0;
    case kMeters: return 100.0;
    default: return 0.0;
    }
}

double MDistance::as(Unit unit, MStatus* status) const
{
    double to = centimetersPer(unit);
    if (status) *status = to > 0.0 ? MStatus::kSuccess : MStatus::kInvalidParameter;
    return to > 0.0 ? value_ * centimetersPer(unit_) / to : 0.0;
}

MDistance::Unit MDistance::uiUnit()
{
    double cm = vqmhost::currentScene().linearUnitInCm;
    for (int u = kInches; u < kLast; ++u)
        if (centimetersPer(Unit(u)) == cm) return Unit(u);
    return kCentimeters;
}

double MDistance::uiToInternal(double value)
{
    return value * vqmhost::currentScene().linearUnitInCm;
}

double MDistance::internalToUI(double value)
{
    return value / vqmhost::currentScene().linearUnitInCm;
}
