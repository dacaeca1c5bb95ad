rem Registers the help collection %%projectgroup_name%%.
hxreg -n %%hhnamespace%% -c %%projectgroup_name%%.hxs
