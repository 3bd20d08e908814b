function build_veloxd(headers, libraries, output)
%BUILD_VELOXD  Compile what the package veloxd calls, veloxd_mex.
%   BUILD_VELOXD(HEADERS, LIBRARIES) takes the folder of VELOxdDll.h and veloxd_blocks.h, and those of the libraries
%   VELOxdDll and VELOxdBlocks (a path, or a cell of paths). In MATLAB it takes a C compiler (mex -setup C).
%   BUILD_VELOXD(HEADERS, LIBRARIES, OUTPUT) writes to the folder OUTPUT instead of that of this file; add both to the path.
    here = fileparts(mfilename('fullpath'));
    if nargin < 3
        output = here;
    end
    sources = dir(fullfile(here, 'mex', '*.c'));
    sources = fullfile(here, 'mex', {sources.name});
    headers = ['-I' char(headers)];
    folders = strcat('-L', cellstr(libraries));
    names = {'-lVELOxdBlocks', '-lVELOxdDll'};
    output = fullfile(char(output), ['veloxd_mex.' mexext()]);
    if exist('OCTAVE_VERSION', 'builtin')
        [printed, status] = mkoctfile('--mex', headers, sources{:}, folders{:}, names{:}, '-o', output);
        if status ~= 0
            error('veloxd:build', '%s', printed);
        end
    else
        mex('-R2018a', headers, sources{:}, folders{:}, names{:}, '-output', output);
    end
end
