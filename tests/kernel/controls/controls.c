// SPDX-License-Identifier: GPL-2.0
// What the tests need from the kernel and it offers no program: the hardware switch of a simulated radio, and a suspend
// that the rest of the virtual machine survives. Each control is a file in /sys/module/controls/parameters.
#include <linux/module.h>
#include <linux/netdevice.h>
#include <linux/pci.h>
#include <linux/pm.h>
#include <net/cfg80211.h>

static struct wiphy *wiphy_of(struct net_device *device)
{
	return device && device->ieee80211_ptr ? device->ieee80211_ptr->wiphy : NULL;
}

// hardware_switch: "INTERFACE 0" turns its radio off, "INTERFACE 1" on.
static int set_hardware_switch(const char *text, const struct kernel_param *parameter)
{
	char name[IFNAMSIZ];
	unsigned int on;
	struct net_device *device;
	struct wiphy *wiphy;

	if (sscanf(text, "%15s %u", name, &on) != 2)
		return -EINVAL;
	device = dev_get_by_name(&init_net, name);
	wiphy = wiphy_of(device);
	if (wiphy)
		wiphy_rfkill_set_hw_state_reason(wiphy, !on, RFKILL_HARD_BLOCK_SIGNAL);
	dev_put(device);
	return wiphy ? 0 : -ENODEV;
}

static int keep_virtio_awake(struct device *device, void *unused)
{
	if (to_pci_dev(device)->vendor == PCI_VENDOR_ID_REDHAT_QUMRANET)
		dev_pm_syscore_device(device, true);
	return 0;
}

static int keep_other_radio_awake(struct device *device, void *card)
{
	dev_pm_syscore_device(device, device != card);
	return 0;
}

// suspend_only: the next suspend includes INTERFACE but no other radio, nor the devices behind the file systems, which do
// not survive it.
static int set_suspend_only(const char *text, const struct kernel_param *parameter)
{
	char name[IFNAMSIZ];
	struct net_device *device;
	struct wiphy *wiphy;

	if (sscanf(text, "%15s", name) != 1)
		return -EINVAL;
	device = dev_get_by_name(&init_net, name);
	wiphy = wiphy_of(device);
	if (wiphy) {
		bus_for_each_dev(&pci_bus_type, NULL, NULL, keep_virtio_awake);
		class_for_each_device(wiphy->dev.class, NULL, &wiphy->dev, keep_other_radio_awake);
	}
	dev_put(device);
	return wiphy ? 0 : -ENODEV;
}

static const struct kernel_param_ops hardware_switch = { .set = set_hardware_switch };
module_param_cb(hardware_switch, &hardware_switch, NULL, 0200);
static const struct kernel_param_ops suspend_only = { .set = set_suspend_only };
module_param_cb(suspend_only, &suspend_only, NULL, 0200);

MODULE_DESCRIPTION("Controls for tests with simulated radios");
MODULE_LICENSE("GPL");
