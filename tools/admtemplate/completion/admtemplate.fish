# Completion of admtemplate for fish.

set -l services 'DMFDeviceStatus DMFSuppliesStatus CapabilitiesInfoProvider'

complete -c admtemplate -n __fish_use_subcommand -f -a eval -d 'Compute values of a template, or one expression'
complete -c admtemplate -n __fish_use_subcommand -f -a check -d 'Find what is wrong with templates'
complete -c admtemplate -n __fish_use_subcommand -f -a repl -d 'Try expressions at a prompt'
complete -c admtemplate -n __fish_use_subcommand -f -a device -d 'Show what is known of a device'
complete -c admtemplate -l help -d 'Show help'

complete -c admtemplate -n '__fish_seen_subcommand_from eval' -l template -r -d 'The template'
complete -c admtemplate -n '__fish_seen_subcommand_from eval' -l expression -x -d 'Compute this'
complete -c admtemplate -n '__fish_seen_subcommand_from eval' -l service -x -a $services -d 'The status service'
complete -c admtemplate -n '__fish_seen_subcommand_from eval' -l device -r -d 'Description, URI or queue'
complete -c admtemplate -n '__fish_seen_subcommand_from eval' -l input -r -d 'Input parameters'
complete -c admtemplate -n '__fish_seen_subcommand_from eval' -l plugin -r -d 'A plug-in bundle'
complete -c admtemplate -n '__fish_seen_subcommand_from eval' -l format -x -a 'text json plist' -d 'Format'
complete -c admtemplate -n '__fish_seen_subcommand_from eval' -l strict -d 'Fail when a value has an error'

complete -c admtemplate -n '__fish_seen_subcommand_from check' -l input -r -d 'Input parameters'
complete -c admtemplate -n '__fish_seen_subcommand_from check' -l plugin -r -d 'A plug-in bundle'
complete -c admtemplate -n '__fish_seen_subcommand_from check' -l key -x -d 'A value that is asked for'
complete -c admtemplate -n '__fish_seen_subcommand_from check' -l format -x -a 'text json' -d 'Format'

complete -c admtemplate -n '__fish_seen_subcommand_from repl' -l service -x -a $services -d 'The status service'
complete -c admtemplate -n '__fish_seen_subcommand_from repl' -l device -r -d 'Description, URI or queue'
complete -c admtemplate -n '__fish_seen_subcommand_from repl' -l input -r -d 'Input parameters'
complete -c admtemplate -n '__fish_seen_subcommand_from repl' -l plugin -r -d 'A plug-in bundle'
complete -c admtemplate -n '__fish_seen_subcommand_from repl' -l strict -d 'Fail when a line has an error'

complete -c admtemplate -n '__fish_seen_subcommand_from device' -l format -x -a 'text plist' -d 'Format'
