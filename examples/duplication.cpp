// Copies two layers that refer to each other, and a style that both share.
#include "Duplication.h"

#include <iostream>
#include <string>

namespace {

class Node : public TvlUtl::Duplicatable {
public:
    explicit Node(std::string label) : name(std::move(label)) { }

    TvlUtl::IDuplicatable* Duplicate(TvlUtl::IDuplicationContext* context) const override
    {
        auto* const copy = new Node("copy of " + name);
        context->MapInstance(this, copy, false);   // before the references: one that leads back here finds the copy
        CopyTo(*copy, *context);
        return copy;
    }
    void CopyTo(TvlUtl::IDuplicatable& target, TvlUtl::IDuplicationContext& context) const override
    {
        auto& copy = static_cast<Node&>(target);
        copy.partner = static_cast<Node*>(context.FindOrDuplicateMappedInstance(partner, true));
        copy.style = static_cast<Node*>(context.FindOrDuplicateMappedInstance(style, true));
    }

    std::string name;
    Node* partner = nullptr;
    Node* style = nullptr;
};

}   // namespace

int main()
{
    Node front("front"), back("back"), style("style");
    front.partner = &back;
    back.partner = &front;
    front.style = back.style = &style;

    TvlUtl::DuplicationContext context;
    auto* const copy = static_cast<Node*>(context.FindOrDuplicateMappedInstance(&front, true));   // ours from now on
    std::cout << copy->name << ", " << copy->partner->name << ", " << copy->style->name << '\n';
    std::cout << "the circle is " << (copy->partner->partner == copy ? "closed" : "open") << '\n';
    std::cout << "the style is " << (copy->style == copy->partner->style ? "shared" : "doubled") << '\n';
    delete copy->style;
    delete copy->partner;
    delete copy;
}
