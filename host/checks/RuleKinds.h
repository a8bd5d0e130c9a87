#ifndef Orrelin_host_checks_RuleKinds_h
#define Orrelin_host_checks_RuleKinds_h

#include <rapidjson/document.h>

#include "Pattern.h"
#include "Rules.h"

namespace OrrelinEngine { namespace Host {

/* A text with what several rules look at */
struct ScannedText: CheckedText {
    explicit ScannedText(const CheckedText& text):
        CheckedText(text), sourceBytes{bytesOf(source)},
        translationBytes{bytesOf(translation)} {}

    Bytes sourceBytes;
    Bytes translationBytes;
};

/* How a rule looks at a text, with the parameters of its row */
class RuleKind {
public:
    virtual ~RuleKind() = default;

    /* What is wrong, empty if nothing is */
    virtual std::string find(const ScannedText& text) const = 0;
};

/* The kind that a row names, null if it's not for single texts. Refers to the
   row and the context. */
std::unique_ptr<RuleKind> makeRuleKind(
    const rapidjson::Value& row, const RuleContext& context);

}}

#endif
