# Completion of veltprops for fish. The program itself knows what can stand where: see "tool/Completion.h".

function __veltprops_complete
    set -l before (commandline -opc)
    set -l typed (commandline -ct | string unescape)
    set -q typed[1]; or set typed ""
    set -l lines ($before[1] complete $before[2..-1] $typed 2>/dev/null)
    switch "$lines[1]"
        case ""
        case "\*"
            __fish_complete_path $typed
        case "*"
            __fish_complete_suffix $lines[1]
    end
    for line in $lines[2..-1]
        echo $line
    end
end

complete -c veltprops -f -a "(__veltprops_complete)"
