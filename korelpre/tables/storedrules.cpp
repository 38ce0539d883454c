#include "korelpre/tables/storedrules.h"

#include <cstring>

#include "korelpre/rules/rule.h"
#include "korelpre/rules/rulestream.h"

namespace precomp {

// The second word of an image says how large it is; see headerimage.h.
std::unique_ptr<tBaseXChg> tStoredRule::make(tRuleContext* context) const {
  const char* const image = reinterpret_cast<const char*>(this) - home;
  std::uint64_t size = 0;
  std::memcpy(&size, image + sizeof size, sizeof size);
  tPCHStream stream({image, static_cast<std::size_t>(size)}, home + body);
  std::unique_ptr<tBaseXChg> rule = tBaseXChg::restore(&stream, context);
  const bool sound = rule != nullptr && rule->key() == keyText() && rule->isCmd() == isCommand() &&
                     rule->wordRule().abbreviate == wordRule().abbreviate &&
                     rule->wordRule().caseSensitive == wordRule().caseSensitive;
  if (!sound) {
    throw tDamagedImage("damaged precompiled header", "korelpre/tables/storedrules", __LINE__);
  }
  return rule;
}

}  // namespace precomp
