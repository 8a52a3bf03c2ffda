// Random edits of one object's attributes against a plain list of pairs: values, order of keys, copies.

#include "objects/Attributes.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using Model = std::vector<std::pair<obmgr::KeyId, std::string>>;

void Set(Model& model, obmgr::KeyId key, const std::string& value)
{
    const auto place = std::find_if(model.begin(), model.end(), [&](const auto& pair) { return pair.first == key; });
    if (place == model.end())
        model.emplace_back(key, value);
    else
        place->second = value;
}

void Compare(const obmgr::Attributes& attributes, const Model& model)
{
    if (attributes.Count() != model.size()) std::abort();
    auto expected = model.begin();
    for (const auto entry : attributes) {
        if (entry.key != expected->first || entry.value != expected->second) std::abort();
        if (attributes.Find(entry.key) != entry.value) std::abort();
        ++expected;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    obmgr::Attributes attributes;
    obmgr::Attributes copy;
    Model model;
    Model modelOfCopy;
    for (std::size_t at = 0; at + 3 <= size; at += 3) {
        const int action = data[at] % 8;
        // Small and large key numbers, which take one to three bytes.
        const obmgr::KeyId key = data[at + 1] * (action == 1 ? 300u : 1u);
        const std::string value(data[at + 2] * (action == 2 ? 97u : 1u), static_cast<char>('a' + data[at] % 26));
        if (action == 3) {
            copy = attributes;
            modelOfCopy = model;
        } else if (action == 4) {
            attributes = copy;
            model = modelOfCopy;
        } else if (action == 5) {
            attributes.ShrinkToFit();
        } else if (action == 6 && attributes.Contains(data[at + 2])) {
            // A value out of the block itself.
            Set(model, key, std::string(attributes.Find(data[at + 2])));
            attributes.Set(key, attributes.Find(data[at + 2]));
        } else {
            attributes.Set(key, value);
            Set(model, key, value);
        }
    }
    Compare(attributes, model);
    Compare(copy, modelOfCopy);
    return 0;
}
