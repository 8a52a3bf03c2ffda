// rivelta: the command-line tool. Options are read here, each command has a file of its own.
#include "Commands.h"
#include "Design.h"
#include "Objects.h"
#include "Output.h"
#include "Texts.h"
#include "ToolInterface.h"
#include "framework/Exception.h"
#include "framework/Language.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <string_view>

#include <CLI/CLI.hpp>

namespace obmgr::tool {

namespace {

// The language is needed before the options are read: their descriptions are in it.
Language chosenLanguage(int argc, char** argv)
{
    std::string_view name;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--") break;
        if (argument == "--lang" && i + 1 < argc) name = argv[i + 1];
        if (argument.rfind("--lang=", 0) == 0) name = argument.substr(7);
    }
    if (name == "ja") return Language::Japanese;
    if (name == "en") return Language::English;
    return SystemLanguage().Primary() == kJapanese ? Language::Japanese : Language::English;
}

class Tool {
public:
    Tool() : m_commands(AllCommands()), m_app(TextOf(Text::ToolSummary), "rivelta")
    {
        SetUp(m_app);
        m_app.set_version_flag("--version", std::string("rivelta ") + RIVELTA_VERSION, TextOf(Text::ToolVersion));
        m_app.footer(TextOf(Text::ToolFooter));
        for (const auto& command : m_commands) {
            CLI::App& app = *m_app.add_subcommand(command->Name(), command->Description());
            SetUp(app);
            app.group(TextOf(Text::LabelSubcommands));
            command->AddOptions(app);
            for (CLI::Option* const option : app.get_options())
                if (option->get_positional()) option->type_name("");
            app.add_flag("--json", m_common.json, TextOf(Text::OptionJson));
            app.add_option("--defaults", m_common.defaults, TextOf(Text::OptionDefaults))->type_name("FILE");
            app.footer(std::string(TextOf(Text::ExampleTitle)) + "\n  " + command->Example());
        }
        // For the list of commands only: see Run.
        m_app.add_subcommand("help", TextOf(Text::HelpSummary))->group(TextOf(Text::LabelSubcommands));
    }

    ExitCode Run(int argc, char** argv)
    {
        std::vector<std::string> arguments(argv + 1, argv + argc);
        if (!arguments.empty() && arguments.front() == "help") {
            // "help COMMAND" is "COMMAND --help".
            arguments.erase(arguments.begin());
            const auto names = CommandNames();
            const auto topic = std::find_if(arguments.begin(), arguments.end(), [](const auto& argument) {
                return argument.empty() || argument.front() != '-';
            });
            // "--lang ja" is no topic.
            if (topic != arguments.end() && (topic == arguments.begin() || *(topic - 1) != "--lang"))
                if (std::find(names.begin(), names.end(), *topic) == names.end()) return RefuseCommand(*topic);
            if (topic != arguments.end() && *topic == "help") arguments.erase(topic);
            arguments.emplace_back("--help");
        }
        std::reverse(arguments.begin(), arguments.end()); // as the parser wants them
        try {
            m_app.parse(std::move(arguments));
        } catch (const CLI::CallForHelp&) {
            return PrintHelp(Chosen());
        } catch (const CLI::CallForVersion& version) {
            Print(std::string(version.what()) + "\n");
            return ExitCode::Done;
        } catch (const CLI::ParseError& error) {
            return Refuse(error);
        }
        for (const auto& command : m_commands)
            if (m_app.got_subcommand(command->Name())) {
                if (!LoadDefaults(m_common.defaults)) return ExitCode::InputUnreadable;
                return command->Run(m_common);
            }
        Complain(TextOf(Text::UsageNoCommand));
        Complain(Say(Text::UsageSeeHelp, "rivelta help"));
        return ExitCode::WrongUsage;
    }

private:
    // What the app and all commands have alike.
    void SetUp(CLI::App& app)
    {
        app.option_defaults()->group(TextOf(Text::LabelOptionsGroup));
        app.set_help_flag("-h,--help", TextOf(Text::OptionHelp));
        app.add_option("--lang", m_common.language, TextOf(Text::OptionLang))
            ->check(CLI::IsMember({"ja", "en"}).description(""))
            ->type_name("ja|en");
        app.get_help_ptr()->group(TextOf(Text::LabelOptionsGroup));
        const auto formatter = std::make_shared<CLI::Formatter>();
        formatter->label("Usage", TextOf(Text::LabelUsage));
        formatter->label("OPTIONS", TextOf(Text::LabelOptions));
        formatter->label("Positionals", TextOf(Text::LabelPositionals));
        formatter->label("SUBCOMMAND", TextOf(Text::LabelSubcommand));
        formatter->label("REQUIRED", TextOf(Text::LabelRequired));
        app.formatter(formatter);
    }

    std::vector<std::string> CommandNames() const
    {
        std::vector<std::string> names;
        for (const auto& command : m_commands)
            names.emplace_back(command->Name());
        names.emplace_back("help");
        return names;
    }

    // The command on the command line; the tool itself when there is none.
    CLI::App& Chosen()
    {
        const auto chosen = m_app.get_subcommands();
        return chosen.empty() ? m_app : *chosen.front();
    }

    ExitCode PrintHelp(CLI::App& app)
    {
        const bool isTool = &app == &m_app;
        // In the list of commands stands the summary, on its own page the description.
        for (const auto& command : m_commands)
            m_app.get_subcommand(command->Name())->description(isTool ? command->Summary() : command->Description());
        Print(isTool ? app.help() : app.help("rivelta"));
        Print("\n");
        return ExitCode::Done;
    }

    ExitCode RefuseCommand(const std::string& name) const
    {
        Complain(Say(Text::UsageUnknownCommand, name));
        const auto near = NearNames(name, CommandNames());
        Complain(near.empty() ? Say(Text::UsageSeeHelp, "rivelta help")
                              : Say(Text::UsageNear, fmt::format("{}", fmt::join(near, ", "))));
        return ExitCode::WrongUsage;
    }

    ExitCode Refuse(const CLI::ParseError& error)
    {
        CLI::App& app = Chosen();
        const std::string what = error.what();
        if (dynamic_cast<const CLI::ExtrasError*>(&error)) {
            const auto extras = m_app.remaining(true);
            if (&app == &m_app && !extras.empty()) return RefuseCommand(extras.front());
            Complain(Say(Text::UsageUnexpected, fmt::format("{}", fmt::join(extras, " "))));
        } else if (dynamic_cast<const CLI::RequiredError*>(&error)) {
            Complain(Say(Text::UsageMissing, what.substr(0, what.find(" is required"))));
        } else {
            Complain(Say(Text::UsageOther, what));
        }
        Complain(Say(Text::UsageSeeHelp, &app == &m_app ? "rivelta help" : "rivelta help " + app.get_name()));
        return ExitCode::WrongUsage;
    }

    std::vector<std::unique_ptr<Command>> m_commands;
    CommonOptions m_common;
    CLI::App m_app;
};

ExitCode runTool(int argc, char** argv)
{
    try {
        const ExitCode code = Tool().Run(argc, argv);
        FlushOutput();
        return code;
    } catch (const OutputFailure& failure) {
        // A reader that has seen enough and closed its pipe is no cause for a message.
        if (failure.Error() != EPIPE)
            Complain(TextOf(Text::StandardOutput), Say(Text::CannotWrite, SystemMessage(failure.Error())));
        return ExitCode::OutputUnwritable;
    } catch (const std::bad_alloc&) {
        Complain(TextOf(Text::OutOfMemory));
    } catch (const std::exception& failure) {
        Complain(Say(Text::UnexpectedFailure, failure.what()));
    } catch (CException* failure) {
        CString message;
        failure->GetErrorMessage(message);
        failure->Delete();
        Complain(Say(Text::UnexpectedFailure, ToUtf8(message.View())));
    }
    return ExitCode::InputUnreadable;
}

} // namespace

} // namespace obmgr::tool

int main(int argc, char** argv)
{
    using namespace obmgr::tool;
    InstallSignalHandlers();
    SetLanguage(chosenLanguage(argc, argv));
    return static_cast<int>(runTool(argc, argv));
}
