// rivelta convert: a file written anew, in another data version if asked.
#include "Commands.h"
#include "Design.h"
#include "Output.h"
#include "Save.h"
#include "Texts.h"
#include "ToolInterface.h"

#include <CLI/CLI.hpp>

namespace obmgr::tool {

namespace {

class ConvertCommand final : public Command {
public:
    const char* Name() const override { return "convert"; }
    std::string Summary() const override { return TextOf(Text::ConvertSummary); }
    std::string Description() const override { return TextOf(Text::ConvertDescription); }
    const char* Example() const override { return "rivelta convert town.xml town13.xml --dataver 13"; }
    void AddOptions(CLI::App& app) override
    {
        app.add_option("IN", m_in, TextOf(Text::ConvertIn))->required();
        app.add_option("OUT", m_out, TextOf(Text::ConvertOut))->required();
        app.add_option("--dataver", m_dataver, TextOf(Text::ConvertDataver))
            ->check(CLI::IsMember({13, 14}).description(""))
            ->type_name("13|14");
    }

    ExitCode Run(const CommonOptions& common) override
    {
        if (common.json && m_out == "-") {
            Complain(TextOf(Text::UsageJsonToStandardOutput));
            return ExitCode::WrongUsage;
        }
        const auto design = OpenDesign(m_in);
        if (!design) return ExitCode::InputUnreadable;
        const int dataver = m_dataver ? *m_dataver : VersionOf(*design);
        const ToolInterface ui(IsLarge(design->form));
        if (!SaveTo(design->manager, m_out, dataver)) return ExitCode::OutputUnwritable;
        const int count = design->manager.GetAllDataCount();
        if (common.json)
            PrintJson({{"input", design->shownName}, {"output", m_out}, {"dataver", dataver}, {"objects", count}});
        else if (m_out != "-")
            Print(Say(Text::ConvertDone, m_out, count, dataver) + "\n");
        return ExitCode::Done;
    }

private:
    std::string m_in;
    std::string m_out;
    std::optional<int> m_dataver;
};

} // namespace

std::unique_ptr<Command> MakeConvertCommand()
{
    return std::make_unique<ConvertCommand>();
}

} // namespace obmgr::tool
