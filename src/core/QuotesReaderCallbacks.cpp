#include "core/QuotesReaderCallbacks.h"

#include <stdexcept>

QBQuotesReaderCallbacks::Role QBQuotesReaderCallbacks::roleOfMember(Role parent,
                                                                    const std::string& key)
{
    if (parent == Role::Root && key == "Quotes" && !mFoundQuotes) {
        mFoundQuotes = true;
        return Role::Quotes;
    }
    if (parent == Role::Element && key == "UID" && !mElements.back().uid) {
        mElements.back().uid.emplace();
        return Role::UID;
    }
    if (parent == Role::Element && key == "Content" && !mElements.back().content) {
        mElements.back().content.emplace();
        return Role::Content;
    }
    return Role::Ignored;
}

QBQuotesReaderCallbacks::Role QBQuotesReaderCallbacks::openChild()
{
    if (mStack.empty()) {
        return Role::Root;
    }
    Layer& parent = mStack.back();
    if (parent.kind == Kind::Leaf) {
        // The previous sibling was a scalar: close it and open the next one.
        mStack.pop_back();
        return openChild();
    }
    if (parent.role == Role::Quotes) {
        // Both array elements and object members count, whatever their key.
        mElements.emplace_back();
        if (parent.kind == Kind::Key) {
            parent.kind = Kind::Object;
        }
        return Role::Element;
    }
    if (parent.kind == Kind::Key) {
        parent.kind = Kind::Object;
        return roleOfMember(parent.role, mKey);
    }
    return Role::Ignored; // an array element outside "Quotes"
}

std::string& QBQuotesReaderCallbacks::beginValue()
{
    if (!mStack.empty()) {
        Layer& top = mStack.back();
        if (top.kind == Kind::Leaf) {
            mStack.pop_back();
            return beginValue();
        }
        if (top.kind == Kind::Object) {
            // A string where a member may start is the member's key.
            top.kind = Kind::Key;
            mKey.clear();
            return mKey;
        }
    }
    mStack.push_back({Kind::Leaf, openChild()});
    return currentText();
}

std::string& QBQuotesReaderCallbacks::currentText()
{
    const Layer& top = mStack.back();
    if (top.kind == Kind::Key) {
        return mKey;
    }
    if (top.role == Role::UID) {
        return *mElements.back().uid;
    }
    if (top.role == Role::Content) {
        return *mElements.back().content;
    }
    mIgnoredText.clear();
    return mIgnoredText;
}

void QBQuotesReaderCallbacks::beginContainer(Kind kind)
{
    if (!mStack.empty() && mStack.back().kind == Kind::Leaf) {
        mStack.pop_back();
    }
    if (mStack.size() >= kMaxNestingDepth) {
        throw std::runtime_error("the document is nested more than " +
                                 std::to_string(kMaxNestingDepth) + " levels deep");
    }
    // A container as "UID" or "Content" keeps the empty text its role started with.
    mStack.push_back({kind, openChild()});
}

void QBQuotesReaderCallbacks::endContainer()
{
    if (mStack.back().kind == Kind::Leaf) {
        mStack.pop_back();
    }
    mStack.pop_back();
}
