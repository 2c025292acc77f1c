#include "base/ZORHostCommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

namespace {

const QLatin1String kProtectedPlugin("load-plugin");

struct Parser
{
    QCommandLineParser parser;
    QCommandLineOption plugin{
        "plugin", ZORHostCommandLine::tr("Loads the plug-in <file>. May be given several times."), "file"};
    QCommandLineOption shieldedPlugin{kProtectedPlugin, QString(), "file"};
    QCommandLineOption noPlugins{
        "no-default-plugins",
        ZORHostCommandLine::tr("Loads only the plug-ins named by --plugin, none from the search path.")};
    QCommandLineOption settings{
        "settings", ZORHostCommandLine::tr("Keeps the settings in <file> instead of the user's own."),
        "file"};
    QCommandLineOption clean{
        "clean-settings",
        ZORHostCommandLine::tr("Starts from the default settings; the stored ones are kept as <file>.bak.")};
    QCommandLineOption theme{
        "theme", ZORHostCommandLine::tr("Colors of the windows in this run: light, dark or system."),
        "light|dark|system"};
    QCommandLineOption open{
        "open",
        ZORHostCommandLine::tr("Opens <file>: a container, STL (millimeters), contour XML, layup XML or "
                               "JSON, or nesting result. "
                               "May be given several times: the first is opened, all others are imported."),
        "file"};
    QCommandLineOption script{
        "script",
        ZORHostCommandLine::tr(
            "Plays the steps of <file> and ends with exit code 0 if all went as expected."),
        "file"};
    QCommandLineOption define{"define", ZORHostCommandLine::tr("Sets a variable of the script."),
                              "name=value"};
    QCommandLineOption help = parser.addHelpOption();
    QCommandLineOption version = parser.addVersionOption();

    Parser()
    {
        shieldedPlugin.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.setApplicationDescription(ZORHostCommandLine::tr(
            "Host application of the Zorvane SDK: 3D view, feature browser and plug-ins."));
        parser.addOptions({plugin, shieldedPlugin, noPlugins, settings, clean, theme, open, script, define});
        parser.addPositionalArgument("files", ZORHostCommandLine::tr("Files to open, as with --open."),
                                     "[files...]");
    }
};

QString Absolute(const QString& file)
{
    return QFileInfo(file).absoluteFilePath();
}

QStringList Absolute(const QStringList& files)
{
    QStringList result;
    for (const QString& file : files)
        result.append(Absolute(file));
    return result;
}

ZORHostCommandLine Failure(const QString& message)
{
    return {ZORHostCommandLine::Status::Error,
            message + u'\n' + ZORHostCommandLine::tr("Run zorhost --help for the options.") + u'\n',
            {}};
}

} // namespace

QByteArray ZORHostCommandLine::ProtectFromQt(const QByteArray& argument)
{
    const QByteArray name = "--plugin";
    if (argument != name && !argument.startsWith(name + '='))
        return argument;
    return "--" + QByteArray(kProtectedPlugin.data()) + argument.mid(name.size());
}

ZORHostCommandLine ZORHostCommandLine::Parse(const QStringList& arguments)
{
    Parser p;
    if (!p.parser.parse(arguments))
        return Failure(p.parser.errorText());
    if (p.parser.isSet(p.help))
        return {Status::Exit, p.parser.helpText(), {}};
    if (p.parser.isSet(p.version)) {
        return {Status::Exit, QStringLiteral("zorhost %1\n").arg(QCoreApplication::applicationVersion()), {}};
    }

    ZORHostCommandLine result;
    ZORHostOptions& options = result.options;
    options.plugins = Absolute(p.parser.values(p.plugin) + p.parser.values(p.shieldedPlugin));
    options.defaultPlugins = !p.parser.isSet(p.noPlugins);
    options.cleanSettings = p.parser.isSet(p.clean);
    options.filesToOpen = Absolute(p.parser.values(p.open) + p.parser.positionalArguments());
    if (p.parser.isSet(p.settings)) {
        if (p.parser.value(p.settings).isEmpty())
            return Failure(tr("The option --settings needs the name of a file."));
        options.settingsFile = Absolute(p.parser.value(p.settings));
    }
    if (p.parser.isSet(p.script))
        options.scriptFile = Absolute(p.parser.value(p.script));

    if (p.parser.isSet(p.theme)) {
        static const QMap<QString, ZORHostOptions::Theme> themes = {{"system", ZORHostOptions::Theme::System},
                                                                    {"light", ZORHostOptions::Theme::Light},
                                                                    {"dark", ZORHostOptions::Theme::Dark}};
        const QString name = p.parser.value(p.theme);
        if (!themes.contains(name))
            return Failure(tr("Unknown theme '%1': choose light, dark or system.").arg(name));
        options.theme = themes.value(name);
        options.themeGiven = true;
    }
    const QStringList definitions = p.parser.values(p.define);
    for (const QString& definition : definitions) {
        const qsizetype equals = definition.indexOf(u'=');
        if (equals < 1)
            return Failure(tr("The option --define needs name=value, not '%1'.").arg(definition));
        options.variables.insert(definition.left(equals), definition.mid(equals + 1));
    }
    return result;
}
