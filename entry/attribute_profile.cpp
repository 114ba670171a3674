// SPDX-License-Identifier: MIT
#include "entry/attribute_profile.hpp"

#include "entry/conversion.hpp"
#include "entry/host.hpp"
#include "entry/image_class.hpp"
#include "entry/messages.hpp"
#include "entry/sparse.hpp"
#include "entry/typed_call.hpp"
#include "entry/usage.hpp"

#include <cstdint>
#include <new>
#include <string>

namespace {

namespace messages = entry::messages;

const char* const version = "MATLAB R14 native";

/// The text of a character array. The host's buffer is not freed: the host reclaims it.
std::string text_of(const mxArray* array) {
  const char* const text = mxArrayToString(array);
  // A string made from a null pointer throws std::logic_error, which the host may not survive.
  if (text == nullptr) throw std::bad_alloc();
  return text;
}

/// Input 5, printed before its name is looked up. Empty if it was not given.
std::string read_rule(std::int32_t nrhs, const mxArray* const prhs[]) {
  if (nrhs < 5 || mxIsEmpty(prhs[4])) return {};
  if (!mxIsChar(prhs[4])) mexErrMsgTxt(messages::bad_rule);
  std::string rule = text_of(prhs[4]);
  mexPrintf("Filtering Rule: %s\n", rule.c_str());
  return rule;
}

/// Input 4, truncated: 4.9 means 4. 0 if it was not given.
std::int32_t read_connectivity(std::int32_t nrhs, const mxArray* const prhs[]) {
  if (nrhs < 4 || mxIsEmpty(prhs[3])) return 0;
  if (!mxIsDouble(prhs[3]) || mxGetNumberOfElements(prhs[3]) != 1 || !entry::is_full(prhs[3]))
    mexErrMsgTxt(messages::bad_connectivity);
  return entry::to_int32(*mxGetPr(prhs[3]));
}

/// A logical image passes here; its class is rejected later.
void check_image(const mxArray* image) {
  if (mxIsEmpty(image) || (!mxIsNumeric(image) && !mxIsLogical(image))) mexErrMsgTxt(messages::bad_image);
  if (mxGetNumberOfDimensions_700(image) > 2) mexErrMsgTxt(messages::too_many_dimensions);
}

std::string read_attribute(const mxArray* attribute) {
  if (mxIsEmpty(attribute) || !mxIsChar(attribute)) mexErrMsgTxt(messages::bad_attribute);
  return text_of(attribute);
}

}  // namespace

const char* mexVersion() { return version; }

// Of several bad inputs the first one checked is reported: users rely on the order 5, 4, 1, 2, 3.
void mexFunction(std::int32_t, mxArray* plhs[], std::int32_t nrhs, const mxArray* prhs[]) {
  if (nrhs > 5 || nrhs == 1 || nrhs == 2) mexErrMsgTxt(messages::wrong_count);
  if (nrhs == 0) return entry::print_usage();

  const std::string rule = read_rule(nrhs, prhs);
  const std::int32_t connectivity = read_connectivity(nrhs, prhs);
  check_image(prhs[0]);
  const std::string attribute = read_attribute(prhs[1]);
  if (mxIsEmpty(prhs[2])) mexErrMsgTxt(messages::empty_thresholds);

  const bool supported = entry::call_with_value_type(mxGetClassID(prhs[0]), [&](auto zero) {
    compute_attribute_profile<decltype(zero)>(prhs[0], plhs[0], attribute, connectivity, prhs[2], rule);
  });
  if (!supported) mexErrMsgTxt(messages::unsupported_class);
}
