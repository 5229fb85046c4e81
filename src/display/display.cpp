// Choice of the formatter by content, and what is too short for a file of its own: handles, texts,
// lines.
#include "display/display.h"

#include <algorithm>

#include "display/struct_text.h"
#include "values/function_bodies.h"

namespace kelo {

namespace {

DisplayContentType contentTypeOf(const FunctionHandle& handle) {
  switch (handle.form()) {
    case FunctionHandle::Form::builtIn:
      return DisplayContentType::builtInFunc;
    case FunctionHandle::Form::userDefined:
      return DisplayContentType::userDefinedFunc;
    case FunctionHandle::Form::local:
      return DisplayContentType::localFunc;
    case FunctionHandle::Form::anonymous:
      break;
  }
  return DisplayContentType::anonymousFunc;
}

DisplayContentType contentTypeOf(const Storable& value) {
  if (const NumericArray* array = value.numeric()) return contentTypeOf(array->kind());
  if (value.isStructure()) return DisplayContentType::structArray;
  if (const FunctionHandle* handle = value.funcHandle()) return contentTypeOf(*handle);
  return DisplayContentType::localFunc;
}

std::string localFunctionText(const std::string& function, const OptionalName& name) {
  return (name ? *name + " = (local function)\n" : "") + " @" + function;
}

std::string handleText(const FunctionHandle& handle, const OptionalName& name) {
  if (handle.form() == FunctionHandle::Form::local) return localFunctionText(handle.name().text(), name);
  return (name ? *name + " = \n" : "") + handle.text();
}

StyledText plain(std::string text) {
  StyledText styled;
  styled.text = std::move(text);
  return styled;
}

StyledText valueText(const Storable& value, const OptionalName& name, const DisplayParameters& parameters) {
  if (const NumericArray* array = value.numeric()) return arrayText(*array, name, parameters);
  if (const StructArray* array = value.structure()) return plain(structText(*array, name, parameters));
  if (const FunctionHandle* handle = value.funcHandle()) return plain(handleText(*handle, name));
  return plain(localFunctionText(value.localFunc()->body().funName.text(), name));
}

int64_t countLines(std::string_view text) {
  const int64_t lineFeeds = std::count(text.begin(), text.end(), '\n');
  return lineFeeds + (!text.empty() && text.back() != '\n');
}

}  // namespace

Display::Display(Storable value, OptionalName name, const Parameters& parameters)
    : content_(std::move(value)), varName_(std::move(name)), parameters_(parameters) {
  contentType_ = contentTypeOf(std::get<Storable>(content_));
  format();
}

Display::Display(Message message, const Parameters& parameters)
    : content_(std::move(message)), parameters_(parameters), contentType_(DisplayContentType::error) {
  format();
}

Display::Display(std::string text, DisplayContentType contentType, const Parameters& parameters)
    : content_(std::move(text)), parameters_(parameters), contentType_(contentType) {
  format();
}

Display Display::inputText(std::string text, const Parameters& parameters) {
  return {std::move(text), DisplayContentType::inputText, parameters};
}

Display Display::disp(std::string text, const Parameters& parameters) {
  return {std::move(text), DisplayContentType::disp, parameters};
}

Display Display::dispValue(const Storable& value, const Parameters& parameters) {
  return disp(valueText(value, std::nullopt, parameters).text, parameters);
}

void Display::format() {
  if (const auto* value = std::get_if<Storable>(&content_))
    text_ = valueText(*value, varName_, parameters_);
  else if (const auto* message = std::get_if<Message>(&content_))
    text_ = plain(message->text());
  else
    text_ = plain(std::get<std::string>(content_));

  if (contentType_ == DisplayContentType::inputText) {
    text_.attributes.push_back({{}, true, {0, utf16Length(text_.text)}});
  }
  numOfLines_ = countLines(text_.text);
}

void Display::setParameters(const Parameters& parameters) {
  if (parameters == parameters_) return;
  parameters_ = parameters;
  format();
}

std::string_view contentTypeName(DisplayContentType contentType) {
  static constexpr std::string_view kNames[] = {
      "doubleArray", "intArray",      "complexArray", "charArray",       "structArray", "error",       "inputText",
      "disp",        "anonymousFunc", "builtInFunc",  "userDefinedFunc", "localFunc",   "logicalArray"};
  return kNames[static_cast<size_t>(contentType)];
}

}  // namespace kelo
