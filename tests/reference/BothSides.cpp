#include "reference/BothSides.h"

#include "reference/RandomNetworks.h"

#include "framework/Exception.h"

namespace reference {

BothSides::BothSides() : m_model(static_cast<std::size_t>(obmgr::kTypeCount)), network(m_model)
{
    InstallDefaults({});
}

BothSides::~BothSides()
{
    CObjectManager::ReSetDefManager(nullptr);
}

int BothSides::Add(Type type, const Ids& links, const Values& values)
{
    static const StepKind kAdd = BaseEdits(0)[kAddRecord];
    const int id = m_model.lastId + 1;
    Args args{{static_cast<int>(type), id}, {}};
    args.numbers.insert(args.numbers.end(), links.begin(), links.end());
    Choice::Pack(args.texts, values);
    Run(kAdd, args);
    return id;
}

std::string BothSides::Run(const StepKind& kind, const Args& args)
{
    Outcome inLibrary;
    Outcome inModel;
    try {
        kind.applyToLibrary(library, args, inLibrary);
    } catch (const CInvalidArgException&) {
        inLibrary.Add(L"raised");
    }
    try {
        kind.applyToModel(network, args, inModel);
    } catch (const Raised&) {
        inModel.Add(L"raised");
    }
    if (inLibrary == inModel) return {};
    std::string text = kind.name;
    for (const int number : args.numbers)
        text += ' ' + std::to_string(number);
    return text + "\n  library: " + inLibrary.Text() + "\n  model:   " + inModel.Text();
}

std::string BothSides::CompareRecords() const
{
    for (const obmgr::RecordInfo& row : obmgr::Records()) {
        Outcome inLibrary;
        Outcome inModel;
        library.TableOf(row.type).ForEach([&](const CPipeObject& object) { inLibrary.AddContents(object); });
        for (const Record* const record : network.All(row.type))
            inModel.AddContents(*record);
        if (!(inLibrary == inModel))
            return std::string(row.tag) + "\n  library: " + inLibrary.Text() + "\n  model:   " + inModel.Text();
    }
    return {};
}

void BothSides::Clear()
{
    library.Initialize();
    m_model.Initialize();
}

std::string BothSides::RunRandom(std::mt19937& random, const std::vector<StepKind>& kinds)
{
    int sum = 0;
    for (const StepKind& kind : kinds)
        sum += kind.weight;
    int at = static_cast<int>(random() % static_cast<unsigned>(sum));
    std::size_t picked = 0;
    while (at >= kinds[picked].weight)
        at -= kinds[picked++].weight;
    Choice choice(random, network);
    return Run(kinds[picked], kinds[picked].choose(choice));
}

} // namespace reference
